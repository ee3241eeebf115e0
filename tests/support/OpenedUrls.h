#pragma once

#include <QList>
#include <QObject>
#include <QStringList>
#include <QUrl>

/// Records the URLs that QDesktopServices would open, during its lifetime.
class OpenedUrls : public QObject
{
    Q_OBJECT

public:
    explicit OpenedUrls(const QStringList &schemes);
    ~OpenedUrls() override;

    /// The URLs in the order of opening.
    QList<QUrl> urls;

public slots:
    void add(const QUrl &url);

private:
    const QStringList m_schemes;
};
