#pragma once

#include <QStyledItemDelegate>

/// Draws the rows of the results tree where its style sheet is not enough.
///
/// - Shortens long texts so that the paths of copies differ visibly; a tool tip shows the whole text.
/// - Sets the colours of check boxes: styles that take them from the tree's transparent background would
///   paint the boxes black and without an outline.
/// - Draws the row "No duplicate files" in its own colour; the style sheet has one for all rows.
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
