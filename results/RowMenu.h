#pragma once

class QMenu;
class QTreeWidgetItem;
class QWidget;

/// The context menu of a row of the results; null for a row that stands for no file.
///
/// The menu keeps the paths, not the row: the row may be gone before an entry is chosen. It only reads the
/// row. The \a parent owns the menu.
[[nodiscard]] QMenu *createRowMenu(const QTreeWidgetItem *row, QWidget *parent);
