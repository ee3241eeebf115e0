#include "app/CaptionFit.h"

#include <QAbstractTextDocumentLayout>
#include <QComboBox>
#include <QFont>
#include <QFontInfo>
#include <QLabel>
#include <QStyleOptionComboBox>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>

namespace {

constexpr int minStretch = 70; // per cent of the normal letter width; narrower letters are hard to read
constexpr int minPixelSize = 8;

/// Compares the items with the edit field: the size hint of a combo box includes an icon and a wider arrow.
bool itemsFit(const QComboBox &box)
{
    QStyleOptionComboBox option;
    option.initFrom(&box);
    option.editable = false;
    const QRect editField =
        box.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box);
    int widest = 0;
    for (int i = 0; i < box.count(); ++i)
        widest = std::max(widest, box.fontMetrics().horizontalAdvance(box.itemText(i)));
    return widest <= editField.width();
}

bool fits(const QWidget *caption)
{
    if (const auto *const box = qobject_cast<const QComboBox *>(caption))
        return itemsFit(*box);
    return caption->sizeHint().width() <= caption->width();
}

template <typename Change>
void changeFonts(const QList<QWidget *> &captions, Change change)
{
    for (QWidget *caption : captions) {
        QFont font = caption->font();
        change(font);
        caption->setFont(font);
    }
}

/// The height of a title in relation to its label, in pixels.
struct TitleHeight
{
    /// Height of the text less that of the label.
    int excess = 0;
    /// Space above the letters of the first line.
    int emptyTop = 0;
};

TitleHeight titleHeight(const QLabel &label)
{
    QTextDocument text;
    text.setDocumentMargin(0);
    text.setDefaultFont(label.font());
    text.setHtml(label.text());
    text.setTextWidth(label.width());
    qreal bottom = 0;
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        if (!block.text().trimmed().isEmpty())
            bottom = text.documentLayout()->blockBoundingRect(block).bottom();
    }
    const QTextBlock first = text.begin();
    const QFontMetrics letters(first.begin().fragment().charFormat().font());
    return {qCeil(bottom) - label.height(), letters.ascent() + letters.tightBoundingRect(first.text()).top()};
}

} // namespace

void fitRow(const QList<QWidget *> &captions)
{
    const auto rowFits = [&captions] { return std::ranges::all_of(captions, fits); };
    for (QWidget *caption : captions)
        caption->setFont(QFont()); // undoes an earlier fit
    for (int stretch = QFont::Unstretched - 1; stretch >= minStretch && !rowFits(); --stretch)
        changeFonts(captions, [stretch](QFont &font) { font.setStretch(stretch); });
    for (int size = QFontInfo(captions.constFirst()->font()).pixelSize() - 1;
         size >= minPixelSize && !rowFits(); --size)
        changeFonts(captions, [size](QFont &font) { font.setPixelSize(size); });
}

int stretchToFit(const QStringList &texts, QFont font, int width)
{
    int stretch = QFont::Unstretched;
    const auto isTooWide = [&](const QString &text) {
        font.setStretch(stretch);
        return QFontMetrics(font).horizontalAdvance(text) > width;
    };
    while (stretch > minStretch && std::ranges::any_of(texts, isTooWide))
        --stretch;
    return stretch;
}

void fitTitle(QLabel *label)
{
    fitRow({label});
    TitleHeight height = titleHeight(*label);
    for (int size = QFontInfo(label->font()).pixelSize() - 1;
         size >= minPixelSize && height.excess > height.emptyTop; --size) {
        changeFonts({label}, [size](QFont &font) { font.setPixelSize(size); });
        height = titleHeight(*label);
    }
    if (height.excess > 0)
        label->setMargin(-height.excess); // only a negative margin starts the text above the label
}
