#include "app/CaptionFit.h"

#include <QAbstractTextDocumentLayout>
#include <QFont>
#include <QFontInfo>
#include <QLabel>
#include <QTextBlock>
#include <QTextDocument>

namespace {

constexpr int narrowest = 75; // per cent of the letters' own width; below that they are hard to read
constexpr int step = 5;
constexpr int smallestPixels = 8; // smaller letters are no use to anybody

} // namespace

void fitCaption(QWidget *caption)
{
    QFont font = caption->font();
    for (int stretch = QFont::Unstretched; stretch >= narrowest; stretch -= step) {
        font.setStretch(stretch);
        caption->setFont(font);
        if (caption->sizeHint().width() <= caption->width())
            break;
    }
}

void fitTitle(QLabel *label)
{
    QTextDocument text;
    text.setDocumentMargin(0);
    text.setDefaultFont(label->font());
    text.setHtml(label->text());

    QFont font = label->font();
    for (int pixels = QFontInfo(font).pixelSize();
         pixels > smallestPixels && text.idealWidth() > label->width();) {
        font.setPixelSize(--pixels);
        text.setDefaultFont(font);
    }
    label->setFont(font);

    text.setTextWidth(label->width());
    qreal bottom = 0;
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        if (!block.text().trimmed().isEmpty())
            bottom = text.documentLayout()->blockBoundingRect(block).bottom();
    }
    const int excess = qCeil(bottom) - label->height();
    if (excess > 0)
        label->setMargin(-excess); // the one way for a text to begin above its label
}
