"""Creates a corpus for compare.sh: make_corpus.py small|large|pairs|photos FOLDER

The bytes are the same on every machine. There are no sparse files and no links.
"""

import os
import random
import sys

KIB = 1024
MIB = 1024 * KIB


def write(path, content):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(content)


def make_small(root, chance):
    """Eight parts of 50,000 files of up to 6 KiB, 100 per folder; 30 % are copies of files in their part."""
    for part in range(8):
        originals = []
        for number in range(50_000):
            if originals and chance.random() < 0.3:
                content = chance.choice(originals)
            else:
                content = chance.randbytes(min(6 * KIB, int(chance.lognormvariate(6.5, 1.2))))
                originals.append(content)
            write(f"{root}/part-{part}/{number // 100:03}/file-{number:05}.txt", content)


def make_large(root, chance):
    """2,000 files of 1 MiB: 500 pairs of copies, 50 pairs that differ only in the middle, 900 unique files."""
    contents = [(content, content) for content in (chance.randbytes(MIB) for _ in range(500))]
    for _ in range(50):
        content = chance.randbytes(MIB)
        contents.append((content, content[:MIB // 2] + chance.randbytes(16) + content[MIB // 2 + 16:]))
    contents += [(chance.randbytes(MIB),) for _ in range(900)]
    names = list(range(2000))
    chance.shuffle(names)
    for content in (each for group in contents for each in group):
        name = names.pop()
        write(f"{root}/{name // 100:02}/disk-{name:04}.img", content)


def make_pairs(root, chance):
    """Two pairs of 2 GiB: one pair of copies, one pair that differs only in the last byte."""
    for number in range(2):
        pieces = [chance.randbytes(16 * MIB) for _ in range(4)]
        os.makedirs(f"{root}/{number}")
        for name in ("disk.img", "copy.img"):
            with open(f"{root}/{number}/{name}", "wb") as file:
                for piece in range(128):
                    file.write(pieces[piece % 4])
                if number == 1 and name == "copy.img":
                    file.seek(-1, os.SEEK_END)
                    file.write(bytes([pieces[3][-1] ^ 1]))


def make_photos(root, chance):
    """1,000 photos with previews and metadata files, a quarter of them copied to a backup, and 20 videos."""
    camera = chance.randbytes(600)
    note = "<x:xmpmeta><rdf:Description Rating='{}' Label='{:08}'/></x:xmpmeta>\n" + 40 * "<rdf:li>holiday</rdf:li>\n"
    for number in range(1000):
        month = f"{2015 + number // 100}/{1 + number // 9 % 12:02}"
        photo = camera + chance.randbytes(int(min(4 * MIB, max(0.3 * MIB, chance.gauss(1.5 * MIB, 0.5 * MIB)))))
        side = note.format(number % 6, number % 400).encode()
        folders = [month, f"backup/{month}"] if chance.random() < 0.25 else [month]
        for folder in folders:
            write(f"{root}/{folder}/IMG_{number:04}.jpg", photo)
            write(f"{root}/{folder}/IMG_{number:04}.xmp", side)
        write(f"{root}/previews/{month}/IMG_{number:04}.jpg", camera + chance.randbytes(chance.randint(5, 15) * KIB))
    for number in range(20):
        write(f"{root}/videos/MOV_{number:04}.mp4", camera + chance.randbytes(20 * MIB + number // 2 * KIB))


def main():
    makers = {"small": make_small, "large": make_large, "pairs": make_pairs, "photos": make_photos}
    if len(sys.argv) != 3 or sys.argv[1] not in makers:
        sys.exit("usage: make_corpus.py small|large|pairs|photos FOLDER")
    makers[sys.argv[1]](sys.argv[2], random.Random(20240917))


main()
