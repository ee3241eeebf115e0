#include "results/ResultsDelegate.h"

#include "app/PathToolTip.h"
#include "results/RowText.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace {

/// Rows before and after a row whose texts are compared with it: more of them distinguish more copies, but a
/// group may have 100,000 rows.
constexpr int comparedRows = 100;

/// Returns the width that the style leaves for a row's text, in pixels.
int textWidth(const QStyleOptionViewItem &option)
{
    const QStyle *const style = option.widget->style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &option, option.widget) + 1;
    return style->subElementRect(QStyle::SE_ItemViewItemText, &option, option.widget).width() - 2 * margin;
}

QStringList neighbours(const QModelIndex &index)
{
    QStringList texts;
    const int last = std::min(index.model()->rowCount(index.parent()) - 1, index.row() + comparedRows);
    for (int row = std::max(0, index.row() - comparedRows); row <= last; ++row)
        texts.append(index.siblingAtRow(row).data().toString());
    return texts;
}

/// Returns the text of a row as it is drawn. \a option must be initialized for the row.
QString shortened(const QStyleOptionViewItem &option, const QModelIndex &index)
{
    const int width = textWidth(option);
    if (option.fontMetrics.horizontalAdvance(option.text) <= width)
        return option.text;
    if (!index.parent().isValid())
        return RowText::elidedTitle(option.text, option.fontMetrics, width);
    return RowText::elidedPath(option.text, neighbours(index), option.fontMetrics, width);
}

} // namespace

void ResultsDelegate::paint(
    QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem row(option);
    initStyleOption(&row, index);
    if (index.flags().testFlag(Qt::ItemIsEnabled)) {
        row.text = shortened(row, index);
        row.widget->style()->drawControl(QStyle::CE_ItemViewItem, &row, painter, row.widget);
        return;
    }
    painter->save();
    painter->setFont(row.font);
    painter->setPen(index.data(Qt::ForegroundRole).value<QBrush>().color());
    painter->drawText(row.rect, static_cast<int>(row.displayAlignment), row.text);
    painter->restore();
}

bool ResultsDelegate::helpEvent(
    QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (event->type() != QEvent::ToolTip)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    QString tip;
    if (index.isValid()) {
        QStyleOptionViewItem row(option);
        initStyleOption(&row, index);
        if (shortened(row, index) != row.text)
            tip = pathToolTip(index.data().toString());
    }
    QToolTip::showText(event->globalPos(), tip, view->viewport());
    return true;
}

void ResultsDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    // A selected row looks like any other. A style sheet rule for it would also change its check box.
    option->state &= ~(QStyle::State_Selected | QStyle::State_HasFocus);
    option->palette.setColor(QPalette::Base, Qt::white);
    // Styles draw the outline of check boxes in a darker shade of this colour.
    option->palette.setColor(QPalette::Window, QColor(0xc9, 0xdc, 0xf0));
}
