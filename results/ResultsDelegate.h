#pragma once

#include <QStyledItemDelegate>

/// Draws what the style sheet of the results tree gets wrong.
///
/// - Long texts are shortened so that copies of a file differ visibly; a tool tip shows the whole text.
/// - The tree's background is transparent: styles that take a check box's colours from its view would paint
///   it black and without an outline.
/// - The style sheet has one text colour for all rows, but the row "No duplicate files" has its own.
class ResultsDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(
        QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
        const QModelIndex &index) override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};
