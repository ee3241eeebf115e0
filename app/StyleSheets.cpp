#include "app/StyleSheets.h"

using Qt::StringLiterals::operator""_s;

namespace StyleSheets {

constexpr QLatin1StringView centralContainer("background-color: #fff;");

// Kept deliberately: the window has no QRadioButton; the rules would style the first one added.
constexpr QLatin1StringView mainWindow(R"(
QPushButton#btnHelp, QToolButton#btnMenu {
    border: none;
    background: transparent;
    border-radius: 6px;
    padding: 4px;
}
QPushButton#btnHelp {
    image: url(:/icon/images/help.png);
}
QToolButton#btnMenu {
    image: url(:/icon/images/menu.png);
}
QPushButton#btnHelp:hover {
    background: #d0eaff;
    image: url(:/icon/images/help_hover.png);
}
QToolButton#btnMenu:hover {
    background: #d0eaff;
    image: url(:/icon/images/menu_hover.png);
}
QToolButton#btnMenu::menu-indicator {
    image: none;
}
QRadioButton::indicator {
    width: 10px;
    height: 10px;
    border-radius: 5px;
    border: 1px solid #888;
    background: #f5f5f5;
}
QRadioButton::indicator:checked {
    background: #4CAF50;
    border: 1px solid #4CAF50;
}
QRadioButton::indicator:hover {
    border: 1px solid #1E88E5;
}
)");

constexpr QLatin1StringView treeFrame("QWidget {  border: 1px solid #dde6ee;  background: #fff;}");

// A selected row looks like any other: only check boxes have a meaning here.
constexpr QLatin1StringView resultsTree(R"(
QTreeWidget {
    font-size: 12px;
    border: none;
    background: transparent;
}
QTreeWidget::item {
    min-height: 33px;
    padding: 6px 0 5px 0;
    border: none;
    outline: none;
    color: #222;
}
QTreeWidget::item:hover {
    background: #eaf4fb;
}
QTreeWidget::item:selected {
    background: transparent !important;
    color: #222 !important;
    border: none;
    outline: none;
}
QTreeWidget::item:focus {
    background: transparent;
    color: #222;
    border: none;
    outline: none;
}
QTreeWidget::branch:selected {
    background: transparent;
}
)");

// Kept deliberately: Qt ignores "transition", here and below, and writes a warning to the debug log. A Qt
// that supports it would fade the colours for the user.
constexpr QLatin1StringView categoryButton(R"(
QPushButton {
    background: transparent;
    border: none;
    color: #7a8faa;
    font-size: 15px;
    font-family: 'Segoe UI', 'PingFang SC', 'Microsoft YaHei', sans-serif;
    padding: 6px 15px;
    border-radius: 16px;
    min-width: 75px;
    min-height: 28px;
    margin-right: 12px;
    font-weight: 400;
    transition: all 0.3s;
}
QPushButton[selected="true"] {
    background: #D2E8FF;
    color: #2A82FF;
    font-weight: 600;
}
QPushButton:hover {
    background: #f4faff;
    color: #317aff;
}
)");

// Kept deliberately: the stray quote and the "//" comments make Qt drop the rule for the selected row.
// Without them, the user would see a clicked row change its colours.
constexpr QLatin1StringView scanFolderList(R"(
QListWidget {
    background: #f3f3f3;
    border: 1px solid #dde6ee;
    border-radius: 10px;
    padding: 6px;
}
QListWidget::item:selected {
    background: #F0F0F0;"  // light grey
    color: #222;  // dark text
}
)");

constexpr QLatin1StringView addFolderButton(R"(
QPushButton {
    min-width: 90px;
    min-height: 36px;
    background: #f7faff;
    border: none;
    padding-left: 0;
    color: #1769ff;
    font-size: 15px;
    font-weight: 600;
    border-radius: 10px;
    transition: background 0.2s;
}
QPushButton:hover {
    background: #eaf1ff;
    color: #0055ea;
}
)");

constexpr QLatin1StringView progressBar(R"(
QProgressBar {
    border: none;
    border-radius: 10px;
    background: #eaf0f6;
    height: 10px;
    text-align: center;
    color: white;
    font-size: 12px;
}
QProgressBar::chunk {
    border-radius: 10px;
    background: qlineargradient(x1:0, y1:0, x2:1, y2:0, stop:0 #5899ff, stop:1 #1e68fa);
}
)");

// Overrides the rules of the frame and the container, which would apply to parts of the scroll bars.
constexpr QLatin1StringView scrollBar(R"(
QScrollBar { background: transparent; border: none; margin: 0; }
QScrollBar:vertical { width: 10px; }
QScrollBar:horizontal { height: 10px; }
QScrollBar::handle { background: #c9dcf0; border: none; border-radius: 4px; margin: 1px; }
QScrollBar::handle:vertical { min-height: 32px; }
QScrollBar::handle:horizontal { min-width: 32px; }
QScrollBar::handle:hover { background: #8dc2f7; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
)");

// Overrides the frame's rule, which applies to all children. Selects by name, because tool tips inherit the
// style sheet of the viewport.
constexpr QLatin1StringView treePart(R"(
#qt_scrollarea_viewport, #qt_scrollarea_hcontainer, #qt_scrollarea_vcontainer {
    border: none;
    background: transparent;
}
)");

constexpr QLatin1StringView folderName("font-size: 14px;");
constexpr QLatin1StringView addedFolderPath("font-size: 14px; color: #333;");
constexpr QLatin1StringView borderless("border: none;");

constexpr QLatin1StringView loadingPanel("\n"
                                         "        background: rgba(243, 247, 255, 0.98);\n"
                                         "        border-radius: 18px;\n"
                                         "        border: 1px solid #e2eafd;\n"
                                         "    ");
constexpr QLatin1StringView loadingLabel(
    "font-size:17px; color:#376cff; font-weight:500;background:transparent; border:none;");

QString outlineButton(int radius)
{
    return uR"(
QPushButton {
    color: #2D85FF;
    background: #fff;
    border: 1px solid #2D85FF;
    border-radius: %1px;
    font-size: 13px;
    min-height: 28px;
    outline: none;
    min-width: 40px;
}
QPushButton:hover {
    border-color: #b5dafc;
    background: #f6fafd;
    color: #176bcb;
}
QPushButton:pressed {
    border-color: #8dc2f7;
    background: #eaf4fb;
    color: #1a6db6;
}
)"_s.arg(radius);
}

QString gradientButton(const QSize &minimum, int radius)
{
    return uR"(
QPushButton {
    min-width: %1px;
    min-height: %2px;
    color: white;
    background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #409eff, stop:1 #1769ff);
    border: none;
    border-radius: %3px;
    font-size: 13px;
    letter-spacing: 1px;
}
QPushButton:hover {
    background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #388bff, stop:1 #155ee0);
}
QPushButton:pressed {
    background: #1769ff;
}
)"_s.arg(minimum.width())
        .arg(minimum.height())
        .arg(radius);
}

} // namespace StyleSheets
