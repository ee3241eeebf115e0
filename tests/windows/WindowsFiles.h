#pragma once

#include <QByteArray>
#include <QString>

/// Whether this is Wine, which does not do everything as Windows does.
[[nodiscard]] bool runsUnderWine();

/// Sets or clears the read-only attribute, as the Properties dialog of the Explorer does.
void setReadOnly(const QString &path, bool readOnly);

/// Writes a file whose name Windows takes as it is, which it otherwise does not: dots and blanks at its end,
/// or the name of a device. False when that cannot be.
[[nodiscard]] bool writeFileWithExactName(
    const QString &folder, const QString &name, const QByteArray &content);
/// Removes such a file.
bool removeFileWithExactName(const QString &folder, const QString &name);

/// What another program that has a file open lets others do with it.
enum class Sharing { Nothing, Reading };

/// A file that another program holds open, as long as this lives.
class OpenFile
{
public:
    OpenFile(const QString &path, Sharing sharing);
    ~OpenFile();

    Q_DISABLE_COPY_MOVE(OpenFile)

private:
    void *m_handle;
};
