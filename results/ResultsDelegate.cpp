#include "results/ResultsDelegate.h"

#include <QPainter>

void ResultsDelegate::paint(
    QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    if (index.flags().testFlag(Qt::ItemIsEnabled)) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem hint(option);
    initStyleOption(&hint, index);
    painter->save();
    painter->setFont(hint.font);
    painter->setPen(index.data(Qt::ForegroundRole).value<QBrush>().color());
    painter->drawText(hint.rect, static_cast<int>(hint.displayAlignment), hint.text);
    painter->restore();
}

void ResultsDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    // A selected row looks like any other. The style sheet's rule for it would also change the check boxes.
    option->state &= ~(QStyle::State_Selected | QStyle::State_HasFocus);
    option->palette.setColor(QPalette::Base, Qt::white);
    // Styles draw the outline in a darker shade of this.
    option->palette.setColor(QPalette::Window, QColor(0xc9, 0xdc, 0xf0));
}
