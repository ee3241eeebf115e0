#pragma once

class QMenu;
class QTreeWidgetItem;
class QWidget;

/// Creates the context menu of a row of the results tree, as a child of \a parent. Returns null for a row
/// without files.
///
/// The menu stores paths, not the row, which may be deleted while the menu is open.
[[nodiscard]] QMenu *createRowMenu(const QTreeWidgetItem *row, QWidget *parent);
