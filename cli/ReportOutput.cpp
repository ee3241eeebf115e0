#include "cli/ReportOutput.h"

#include "cli/FilePath.h"
#include "cli/Interruption.h"
#include "cli/Messages.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

/// Bytes collected before they are written: large enough that writing costs nothing beside formatting.
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

QString ReportOutput::obstacle() const
{
    if (isStandardOutput())
        return {};
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
    return {};
}

bool ReportOutput::fail(const QString &reason)
{
    m_result = WriteResult::Failed;
    m_reason = reason;
    return false;
}

bool ReportOutput::open()
{
    if (m_file)
        return true;
    // Replacing a device or a pipe would take it from everybody else.
    if (const QFileInfo file(m_name); file.exists() && !file.isFile())
        m_file = std::make_unique<QFile>(m_name);
    else
        m_file = std::make_unique<QSaveFile>(m_name);
    return m_file->open(QIODevice::WriteOnly) || fail(m_file->errorString());
}

bool ReportOutput::flush()
{
    if (m_result == WriteResult::Written)
        m_result = writeToStandardOutput(m_pending, m_reason);
    m_pending.clear();
    return m_result == WriteResult::Written;
}

bool ReportOutput::write(const QByteArray &bytes)
{
    if (m_result != WriteResult::Written)
        return false;
    if (isStandardOutput()) {
        m_pending += bytes;
        return m_pending.size() < pendingSize || flush();
    }
    if (interrupted()) {
        m_result = WriteResult::Interrupted;
        return false;
    }
    return open() && (m_file->write(bytes) == bytes.size() || fail(m_file->errorString()));
}

ExitCode ReportOutput::finish()
{
    if (isStandardOutput()) {
        flush();
    } else if (m_result == WriteResult::Written && open()) {
        auto *const replacement = qobject_cast<QSaveFile *>(m_file.get());
        if (!(replacement ? replacement->commit() : m_file->flush()))
            fail(m_file->errorString());
    }
    if (m_result == WriteResult::Interrupted)
        return ExitInterrupted;
    if (m_result != WriteResult::Failed)
        return ExitDone;
    printMessage(u"cannot write %1: %2"_s.arg(isStandardOutput() ? u"standard output"_s : m_name, m_reason));
    return ExitFailed;
}
