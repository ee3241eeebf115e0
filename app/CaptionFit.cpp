#include "app/CaptionFit.h"

#include <QFont>
#include <QWidget>

namespace {

constexpr int narrowest = 75; // per cent of the letters' own width; below that they are hard to read
constexpr int step = 5;

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
