#pragma once

#include <QStyledItemDelegate>

/// Draws the rows of the results tree where the tree's style sheet alone would spoil them.
///
/// The tree's background is transparent: styles that take a tick box's colours from its view would paint it
/// black and without an outline. And the sheet has one text colour for all rows, where the row that says that
/// nothing was found is to look like a hint.
class ResultsDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(
        QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};
