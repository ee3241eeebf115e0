#pragma once

#include <QString>

/// Makes a file immutable during its lifetime: no user, not even root, can change or remove it.
class ImmutableFile
{
public:
    explicit ImmutableFile(const QString &path);
    ~ImmutableFile();
    Q_DISABLE_COPY_MOVE(ImmutableFile)

    /// Why the file is not immutable; empty on success.
    [[nodiscard]] QString obstacle() const
    {
        return m_obstacle;
    }

private:
    const QString m_path;
    const QString m_obstacle;
};
