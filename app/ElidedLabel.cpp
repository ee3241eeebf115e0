#include "app/ElidedLabel.h"

#include "app/PathToolTip.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

ElidedLabel::ElidedLabel(const QString &path, QWidget *parent)
    : QLabel(path, parent)
{
    setTextFormat(Qt::PlainText);
}

bool ElidedLabel::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const auto *const help = static_cast<QHelpEvent *>(event);
    const bool cut = visibleText() != text();
    QToolTip::showText(help->globalPos(), cut ? pathToolTip(text()) : QString(), this);
    return true;
}

void ElidedLabel::paintEvent([[maybe_unused]] QPaintEvent *event)
{
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(),
        visibleText(), foregroundRole());
}

QString ElidedLabel::visibleText() const
{
    return fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
}
