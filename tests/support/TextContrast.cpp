#include "tests/support/TextContrast.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QHash>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QTextDocument>
#include <QTreeWidget>

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

constexpr int magnification = 4;    // makes letters contain pixels of the text colour
constexpr double sameSurface = 1.1; // contrast within a gradient or a shaded panel
constexpr int mostEdgePixels = 40;  // pixels of one colour at the edges of letters

struct TextArea
{
    QString name;
    QRect rect; ///< in the window
    bool enabled;
};

bool isLetter(QChar character)
{
    return character.isLetter();
}

double linear(double channel)
{
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QRgb mostFrequent(const QHash<QRgb, int> &counts, std::optional<QRgb> except = {})
{
    QRgb best = 0;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        if (it.key() != except && (best == except || it.value() > counts.value(best)))
            best = it.key();
    }
    return best;
}

/// The most frequent colour of each line of pixels is the background: gradients run from top to bottom.
ShownText measure(const TextArea &area, const QImage &picture)
{
    QList<QHash<QRgb, int>> lines;
    QHash<QRgb, int> letters;
    for (int y = 0; y < picture.height(); ++y) {
        QHash<QRgb, int> counts;
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
        const QRgb background = mostFrequent(counts);
        for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
            if (contrastRatio(it.key(), background) > sameSurface)
                letters[it.key()] += it.value();
        }
        lines.append(counts);
    }
    const QRgb text = mostFrequent(letters);
    ShownText shown{area.name, QColor(text), QColor(text), 21, area.enabled};
    if (letters.value(text) < mostEdgePixels)
        return {area.name, {}, {}, 1, area.enabled}; // no visible text
    for (const QHash<QRgb, int> &counts : lines) {
        const QColor background(mostFrequent(counts, text));
        const double contrast = contrastRatio(QColor(text), background);
        if (counts.size() > 1 && counts.contains(text) && contrast <= shown.contrast) {
            shown.background = background;
            shown.contrast = contrast;
        }
    }
    return shown;
}

QRect textRect(const QAbstractButton &button)
{
    if (const auto *const box = qobject_cast<const QCheckBox *>(&button)) {
        QStyleOptionButton option;
        option.initFrom(box);
        return box->style()->subElementRect(QStyle::SE_CheckBoxContents, &option, box);
    }
    QStyleOptionButton option;
    option.initFrom(&button);
    const int icon = button.icon().isNull() ? 0 : 12 + button.iconSize().width();
    return button.style()
        ->subElementRect(QStyle::SE_PushButtonContents, &option, &button)
        .adjusted(icon, 4, 0, -4);
}

QRect textRect(const QComboBox &box)
{
    QStyleOptionComboBox option;
    option.initFrom(&box);
    option.editable = false;
    return box.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box);
}

/// Adds the names of the rows, without arrow, check box and thumbnail.
void addRows(const QTreeWidget &tree, const QPoint &origin, QList<TextArea> &areas)
{
    for (QTreeWidgetItem *item = tree.topLevelItem(0); item; item = tree.itemBelow(item)) {
        const QRect rect = tree.visualItemRect(item) & tree.viewport()->rect();
        if (rect.height() < 20)
            continue;
        const int left = item->parent() ? 80 : 45;
        areas.append({item->text(0), rect.adjusted(left, 0, 0, 0).translated(origin), !item->isDisabled()});
    }
}

QList<TextArea> textAreasOf(QWidget &widget, const QWidget &window)
{
    const QPoint origin = widget.mapTo(&window, QPoint());
    const auto area = [&](const QRect &rect) {
        const QString text = widget.property("text").toString();
        const QString name = widget.objectName().isEmpty() ? text : widget.objectName();
        return QList<TextArea>{{name, rect.translated(origin), widget.isEnabled()}};
    };
    QList<TextArea> areas;
    if (const auto *const label = qobject_cast<QLabel *>(&widget); label && !label->text().isEmpty())
        return area(label->contentsRect());
    if (const auto *const button = qobject_cast<QAbstractButton *>(&widget);
        button && std::ranges::any_of(button->text(), isLetter)) // an emoji has its own colours
        return area(textRect(*button));
    if (const auto *const edit = qobject_cast<QLineEdit *>(&widget); edit && !edit->displayText().isEmpty())
        return area(edit->rect().adjusted(2, 2, -2, -2));
    if (const auto *const box = qobject_cast<QComboBox *>(&widget))
        return area(textRect(*box));
    if (const auto *const bar = qobject_cast<QProgressBar *>(&widget))
        return area(QRect(bar->width() / 2 - 16, 3, 32, bar->height() - 6));
    if (const auto *const menu = qobject_cast<QMenu *>(&widget)) {
        const QList<QAction *> actions = menu->actions();
        for (QAction *action : actions)
            areas.append(
                {action->text(), menu->actionGeometry(action).translated(origin), action->isEnabled()});
    }
    if (const auto *const tree = qobject_cast<QTreeWidget *>(&widget))
        addRows(*tree, tree->viewport()->mapTo(&window, QPoint()), areas);
    return areas;
}

} // namespace

double contrastRatio(const QColor &color, const QColor &other)
{
    const double first = luminance(color) + 0.05;
    const double second = luminance(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

QList<ShownText> shownTexts(QWidget &window)
{
    QImage picture(window.size() * magnification, QImage::Format_RGB32);
    picture.setDevicePixelRatio(magnification);
    picture.fill(Qt::black); // what X11 shows in unpainted areas
    window.render(&picture);

    QList<ShownText> texts;
    QList<QWidget *> widgets = window.findChildren<QWidget *>();
    widgets.prepend(&window);
    for (QWidget *widget : std::as_const(widgets)) {
        if (!widget->isVisible() || widget->window() != &window)
            continue;
        for (const TextArea &area : textAreasOf(*widget, window)) {
            const QRect rect = area.rect & window.rect();
            texts.append(measure(
                area, picture.copy(QRect(rect.topLeft() * magnification, rect.size() * magnification))));
        }
    }
    return texts;
}
