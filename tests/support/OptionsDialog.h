#pragma once

#include <QCheckBox>
#include <QString>
#include <QWidget>

#include <array>

inline constexpr std::array typeBoxes{
    "chkTypeArchive", "chkTypeDoc", "chkTypeAudio", "chkTypeVideo", "chkTypePhoto", "chkTypeOthers"};
inline constexpr std::array skipBoxes{
    "chkSkipSystem", "chkSkipApps", "chkSkipHiddenFolder", "chkSkipDesktop"};

/// The widget of the dialog with this object name.
template <typename Widget = QCheckBox>
Widget *child(const QWidget *dialog, const char *name)
{
    return dialog->findChild<Widget *>(QLatin1StringView(name));
}

/// Sets the check boxes with these object names.
template <typename Names>
void checkAll(const QWidget *dialog, const Names &names, bool checked)
{
    for (const char *name : names)
        child(dialog, name)->setChecked(checked);
}

/// One character per type box and skip box in the order of the arrays: "x" if checked, "-" otherwise.
inline QString checks(const QWidget *dialog)
{
    QString text;
    for (const char *name : typeBoxes)
        text += child(dialog, name)->isChecked() ? u'x' : u'-';
    text += u' ';
    for (const char *name : skipBoxes)
        text += child(dialog, name)->isChecked() ? u'x' : u'-';
    return text;
}
