#pragma once

#include "cli/ExitCode.h"
#include "cli/StandardOutput.h"

#include <QByteArray>
#include <QString>

#include <memory>

class QFileDevice;

/// Where a report goes: standard output, or a file that is written completely or not at all. Any one thread.
class ReportOutput
{
public:
    /// An empty \a file, or "-", stands for standard output.
    explicit ReportOutput(const QString &file);
    ~ReportOutput();
    Q_DISABLE_COPY_MOVE(ReportOutput)

    /// Why the file cannot be written, as far as can be told without touching it. Empty when it can.
    [[nodiscard]] QString obstacle() const;

    /// False once nothing more can be written, or the user has interrupted the program.
    bool write(const QByteArray &bytes);

    /// Ends the output; prints a message when anything went wrong. A file that is not there before this call
    /// is not there without it.
    [[nodiscard]] ExitCode finish();

    [[nodiscard]] bool isStandardOutput() const;

private:
    bool open();
    bool fail(const QString &reason);
    bool flush();

    QString m_name;
    std::unique_ptr<QFileDevice> m_file;
    /// What standard output still has to get.
    QByteArray m_pending;
    WriteResult m_result = WriteResult::Written;
    QString m_reason;
};
