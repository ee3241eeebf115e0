#pragma once

#include "cli/ExitCode.h"
#include "cli/StandardOutput.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include <memory>
#include <optional>

class QSaveFile;

/// The destination of a report: standard output, a device or pipe, or a file, which is written completely or
/// not at all. Usable by one thread at a time.
class ReportOutput
{
public:
    /// An empty \a file, or "-", means standard output.
    explicit ReportOutput(const QString &file);
    ~ReportOutput();
    Q_DISABLE_COPY_MOVE(ReportOutput)

    /// Why the file cannot be written, as far as this can be detected without touching it.
    [[nodiscard]] std::optional<QString> obstacle() const;

    /// False if nothing more can be written, or if the program was interrupted.
    bool write(const QByteArray &bytes);

    /// Ends the output and prints a message if a part of it failed. Without this call, a file stays as it
    /// was.
    [[nodiscard]] ExitCode finish();

    [[nodiscard]] bool isStandardOutput() const;

private:
    [[nodiscard]] bool open();
    bool fail(const QString &reason);
    bool flush();

    const QString m_name;
    /// Replaces the file at m_name; null for standard output and for a device.
    std::unique_ptr<QSaveFile> m_file;
    QFile m_device;
    /// Bytes for standard output or the device that are not yet written.
    QByteArray m_pending;
    WriteResult m_result = WriteResult::Written;
    QString m_reason;
};
