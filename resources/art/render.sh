#!/usr/bin/env bash
# Renders the SVG files in this folder to the PNG files of resources.qrc, and the logo to the icons of the packages.
set -euo pipefail

art=$(CDPATH="" cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
out=$(dirname -- "$art")

fail() {
    printf 'render.sh: %s\n' "$1" >&2
    exit 1
}

# render SVG WIDTH HEIGHT PNG [COLOUR]: sizes in pixels; COLOUR replaces currentColor.
render() {
    local svg=$art/$1 png=$out/$4
    [[ -r $svg ]] || fail "cannot read $svg"
    local style="svg { color: ${5:-#7a8faa}; }" error
    error=$(rsvg-convert --width "$2" --height "$3" --stylesheet <(printf '%s\n' "$style") \
        --output "$png" "$svg" 2>&1) || fail "cannot render $svg to $png: ${error//$'\n'/ }"
}

(($# == 0)) || fail "takes no arguments (got: $*)"
command -v rsvg-convert >/dev/null || fail "rsvg-convert not found (Debian package librsvg2-bin)"
command -v convert >/dev/null || fail "convert not found (Debian package imagemagick)"
command -v icotool >/dev/null || fail "icotool not found (Debian package icoutils)"
mkdir -p "$out/images" "$out/icons" "$out/app-icons" 2>/dev/null ||
    fail "cannot create $out/images, $out/icons and $out/app-icons"

render logo.svg            256  256 images/logo.png
render add_icon.svg        100  100 images/add_icon.png
render delete_icon.svg      80   80 images/delete_icon.png
render help.svg             96   96 images/help.png
render help.svg             96   96 images/help_hover.png '#1769ff'
render menu.svg             96   96 images/menu.png
render menu.svg             96   96 images/menu_hover.png '#1769ff'
render scan_image_bg_1.svg 564  484 images/scan_image_bg_1.png
render scan_bg.svg        2142  342 images/scan_bg.png
render lock.svg             32   32 icons/lock.png

for size in 16 24 32 48 64 128; do
    render logo.svg "$size" "$size" "app-icons/$size.png"
done
# In the Windows icon, the large sizes stay compressed; only newer systems use them.
(cd "$out/app-icons" && icotool --create --output quillory.ico \
    16.png 24.png 32.png 48.png 64.png --raw 128.png --raw ../images/logo.png) ||
    fail "cannot create $out/app-icons/quillory.ico"

# The picture beside the last page of the Windows installer, whose size NSIS prescribes.
convert -size 164x314 'xc:#eef4ff' \( "$out/images/logo.png" -resize 104x104 \) -gravity center -composite \
    -dither None -colors 256 -compress none "BMP3:$out/app-icons/installer.bmp" || fail "cannot create $out/app-icons/installer.bmp"
