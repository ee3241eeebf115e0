#include "analysis/ComparedFile.h"

using Qt::Literals::StringLiterals::operator""_s;

namespace {

QString changedText()
{
    return u"The file has changed"_s;
}

} // namespace

ComparedFile::ComparedFile(const SurveyedFile &file)
    : m_file(file.path)
{
    if (!m_file.isOpen())
        m_problem = m_file.errorText();
    else if (m_file.sizeAtOpening() != file.size)
        m_problem = changedText();
}

const QString &ComparedFile::problem() const
{
    return m_problem;
}

void ComparedFile::read(qint64 position, std::span<char> piece)
{
    check(m_file.readAt(position, piece.data(), std::ssize(piece)), piece);
}

bool ComparedFile::readIfCached(qint64 position, std::span<char> piece)
{
    const std::optional<qint64> read = m_file.readIfCached(position, piece.data(), std::ssize(piece));
    if (read)
        check(*read, piece);
    return read.has_value();
}

void ComparedFile::prefetch(qint64 position, qint64 count) const
{
    m_file.prefetch(position, count);
}

void ComparedFile::check(qint64 read, std::span<char> piece)
{
    if (read == std::ssize(piece))
        return;
    m_problem = m_file.errorText();
    if (m_problem.isEmpty())
        m_problem = changedText();
}
