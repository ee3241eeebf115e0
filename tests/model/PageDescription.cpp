#include "tests/model/PageDescription.h"

using Qt::StringLiterals::operator""_s;

QList<CategoryButton> categoryButtonsByKey()
{
    return {{u"all"_s, "btnAll"}, {u"picture"_s, "btnPictures"}, {u"video"_s, "btnVideos"},
        {u"audio"_s, "btnAudios"}, {u"document"_s, "btnDocuments"}, {u"archive"_s, "btnArchives"},
        {u"other"_s, "btnOthers"}};
}

QString groupLine(const QString &title, Qt::CheckState state, const QString &loadedUnder)
{
    return u"%1 [%2] {%3}"_s.arg(title, QString::number(state), loadedUnder);
}

QString fileLine(const QString &path, const QString &size, const QString &time, bool checked)
{
    return u"    %1 %2 | %3 | %4"_s.arg(QString(checked ? u'x' : u'_'), path, size, time);
}

QString stateLine(
    bool actionsEnabled, const QString &selectedKey, const QString &totals, const QString &status)
{
    return u"actions %1, selected %2, totals <%3>, status <%4>"_s.arg(
        actionsEnabled ? u"on"_s : u"off"_s, selectedKey, totals, status);
}

QStringList describe(WindowDriver &driver)
{
    QStringList lines;
    QTreeWidget *const tree = driver.tree();
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        const QTreeWidgetItem *const row = tree->topLevelItem(i);
        if (row->flags() == Qt::NoItemFlags) {
            lines.append(row->text(0));
            continue;
        }
        lines.append(groupLine(row->text(0), row->checkState(0), row->data(0, Qt::UserRole + 1).toString()));
        for (int j = 0; j < row->childCount(); ++j) {
            const QTreeWidgetItem *const file = row->child(j);
            lines.append(
                fileLine(file->text(0), file->text(1), file->text(2), file->checkState(0) == Qt::Checked));
        }
    }
    QStringList selected;
    bool categoriesEnabled = true;
    for (const CategoryButton &button : categoryButtonsByKey()) {
        const auto *const widget = driver.find<QPushButton>(button.name);
        categoriesEnabled = categoriesEnabled && widget->isEnabled();
        if (widget->property("selected").toBool())
            selected.append(button.key);
    }
    int enabled = 0;
    for (const char *name : {"btnSelectAll", "btnUnselect", "btnRemoveSelected"})
        enabled += driver.find<QPushButton>(name)->isEnabled() ? 1 : 0;
    if (!categoriesEnabled || (enabled != 0 && enabled != 3) || driver.page() != u"duplicatespage")
        lines.append(u"a category button is disabled, the actions disagree or another page is shown"_s);
    lines.append(stateLine(enabled == 3, selected.join(u'+'), driver.labelText("labelStatsInfo"),
        driver.labelText("labelScanStatus")));
    return lines;
}
