#pragma once

#include <QByteArray>
#include <QString>

/// True under Wine, which differs from Windows in some details.
[[nodiscard]] bool runsUnderWine();

/// Sets or clears the read-only attribute, as the Properties dialog of Explorer does.
void setReadOnly(const QString &path, bool readOnly);

/// Writes a file whose name Windows would otherwise change: with dots or blanks at its end, or with the name
/// of a device. False on failure.
[[nodiscard]] bool writeFileWithExactName(
    const QString &folder, const QString &name, const QByteArray &content);
/// Removes a file written by writeFileWithExactName(); false on failure.
bool removeFileWithExactName(const QString &folder, const QString &name);

/// What a program that has a file open allows others to do with it.
enum class Sharing { Nothing, Reading };

/// Holds a file open during its lifetime, as another program would.
class OpenFile
{
public:
    OpenFile(const QString &path, Sharing sharing);
    ~OpenFile();

    Q_DISABLE_COPY_MOVE(OpenFile)

private:
    void *m_handle;
};
