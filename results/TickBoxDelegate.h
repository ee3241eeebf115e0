#pragma once

#include <QStyledItemDelegate>

/// Draws the tick boxes of the results tree in colours of their own. The tree's background is transparent, and styles
/// that take a box's colours from its view would paint it black and without an outline.
class TickBoxDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};
