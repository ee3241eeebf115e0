#pragma once

#include <QList>
#include <QObject>
#include <QStringList>
#include <QUrl>

/// Catches the addresses that QDesktopServices would open on the desktop, while it lives.
class OpenedUrls : public QObject
{
    Q_OBJECT

public:
    explicit OpenedUrls(const QStringList &schemes);
    ~OpenedUrls() override;

    /// In the order of opening.
    QList<QUrl> urls;

public slots:
    void add(const QUrl &url);

private:
    const QStringList m_schemes;
};
