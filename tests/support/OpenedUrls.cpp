#include "tests/support/OpenedUrls.h"

#include <QDesktopServices>

OpenedUrls::OpenedUrls(const QStringList &schemes)
    : m_schemes(schemes)
{
    for (const QString &scheme : m_schemes)
        QDesktopServices::setUrlHandler(scheme, this, "add");
}

OpenedUrls::~OpenedUrls()
{
    for (const QString &scheme : m_schemes)
        QDesktopServices::unsetUrlHandler(scheme);
}

void OpenedUrls::add(const QUrl &url)
{
    urls.append(url);
}
