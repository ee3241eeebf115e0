#include "cli/ReportOutput.h"

#include "cli/FilePath.h"
#include "cli/Interruption.h"
#include "cli/Messages.h"
#include "cli/OutputDevice.h"

#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

/// Bytes to collect before a write. Large enough to make the cost of writing negligible.
constexpr qsizetype pendingSize = 1 << 16;

} // namespace

ReportOutput::ReportOutput(const QString &file)
    : m_name(file == u"-" ? QString() : asFilePath(file))
{
}

ReportOutput::~ReportOutput() = default;

bool ReportOutput::isStandardOutput() const
{
    return m_name.isEmpty();
}

std::optional<QString> ReportOutput::obstacle() const
{
    if (isStandardOutput())
        return std::nullopt;
    const QFileInfo file(m_name);
    const QFileInfo folder(file.path());
    if (file.isDir() || m_name.endsWith(u'/'))
        return qt_error_string(EISDIR);
    if (!folder.exists())
        return qt_error_string(ENOENT);
    if (!folder.isDir())
        return qt_error_string(ENOTDIR);
    if (file.exists() ? !file.isWritable() : !folder.isWritable())
        return qt_error_string(EACCES);
    return std::nullopt;
}

bool ReportOutput::fail(const QString &reason)
{
    m_result = WriteResult::Failed;
    m_reason = reason;
    return false;
}

bool ReportOutput::open()
{
    if (isStandardOutput() || m_file || m_device.isOpen())
        return true;
    // A QSaveFile would replace a device or a pipe with a regular file.
    if (const QFileInfo file(m_name); file.exists() && !file.isFile()) {
        m_result = openDevice(m_name, m_device, m_reason);
        return m_result == WriteResult::Written;
    }
    m_file = std::make_unique<QSaveFile>(m_name);
    return m_file->open(QIODevice::WriteOnly) || fail(m_file->errorString());
}

bool ReportOutput::flush()
{
    m_result = writeToStream(isStandardOutput() ? standardOutput : m_device.handle(), m_pending, m_reason);
    m_pending.clear();
    return m_result == WriteResult::Written;
}

bool ReportOutput::write(const QByteArray &bytes)
{
    if (m_result != WriteResult::Written || !open())
        return false;
    if (!m_file) {
        m_pending += bytes;
        return m_pending.size() < pendingSize || flush();
    }
    if (interrupted()) {
        m_result = WriteResult::Interrupted;
        return false;
    }
    return m_file->write(bytes) == bytes.size() || fail(m_file->errorString());
}

ExitCode ReportOutput::finish()
{
    if (m_result == WriteResult::Written && open()) {
        if (!m_file)
            flush();
        else if (!m_file->commit())
            fail(m_file->errorString());
    }
    switch (m_result) {
    case WriteResult::Written:
    case WriteResult::ReaderGone:
        return ExitDone;
    case WriteResult::Interrupted:
        printMessage(
            m_file ? u"interrupted: nothing is reported"_s : u"interrupted: the report is incomplete"_s);
        return ExitInterrupted;
    case WriteResult::Failed:
        break;
    }
    printMessage(u"cannot write %1: %2"_s.arg(isStandardOutput() ? u"standard output"_s : m_name, m_reason));
    return ExitFailed;
}
