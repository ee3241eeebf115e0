#include "app/LightPalette.h"

#include <QApplication>
#include <QToolTip>

#include <array>

namespace {

struct RoleColors
{
    QPalette::ColorRole role;
    QRgb enabled;
    QRgb disabled;
};

constexpr QRgb black = 0xff000000;
constexpr QRgb white = 0xffffffff;
constexpr QRgb grey = 0xffefefef;
constexpr QRgb disabledText = 0xff7d7d7d; // 3.6:1 on grey, 4.1:1 on white
constexpr QRgb blue = 0xff1565e0;         // the buttons' blue, dark enough for white text

constexpr std::array colors{
    RoleColors{QPalette::WindowText, black, disabledText},
    RoleColors{QPalette::Button, grey, grey},
    RoleColors{QPalette::Light, white, white},
    RoleColors{QPalette::Midlight, 0xffcacaca, 0xffcacaca},
    RoleColors{QPalette::Dark, 0xff9f9f9f, 0xffbebebe},
    RoleColors{QPalette::Mid, 0xffb8b8b8, 0xffb8b8b8},
    RoleColors{QPalette::Text, black, disabledText},
    RoleColors{QPalette::BrightText, white, white},
    RoleColors{QPalette::ButtonText, black, disabledText},
    RoleColors{QPalette::Base, white, grey},
    RoleColors{QPalette::Window, grey, grey},
    RoleColors{QPalette::Shadow, 0xff767676, 0xffb1b1b1},
    RoleColors{QPalette::Highlight, blue, 0xff919191},
    RoleColors{QPalette::HighlightedText, white, white},
    RoleColors{QPalette::Link, 0xff0b57d0, disabledText},
    RoleColors{QPalette::LinkVisited, 0xff7b1fa2, disabledText},
    RoleColors{QPalette::AlternateBase, 0xfff7f7f7, 0xfff7f7f7},
    RoleColors{QPalette::ToolTipBase, 0xffffffe4, 0xffffffe4},
    RoleColors{QPalette::ToolTipText, black, black},
    RoleColors{QPalette::PlaceholderText, 0xff6b6b6b, disabledText},
};

} // namespace

QPalette lightPalette()
{
    QPalette palette;
    for (const auto &[role, enabled, disabled] : colors) {
        palette.setColor(QPalette::Active, role, QColor::fromRgb(enabled));
        palette.setColor(QPalette::Inactive, role, QColor::fromRgb(enabled));
        palette.setColor(QPalette::Disabled, role, QColor::fromRgb(disabled));
    }
    return palette;
}

void applyLightPalette()
{
    QApplication::setPalette(lightPalette());
    QToolTip::setPalette(lightPalette());
}
