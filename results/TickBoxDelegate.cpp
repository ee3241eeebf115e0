#include "results/TickBoxDelegate.h"

void TickBoxDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->palette.setColor(QPalette::Base, Qt::white);
    // Styles draw the outline in a darker shade of this.
    option->palette.setColor(QPalette::Window, QColor(0xc9, 0xdc, 0xf0));
}
