// SPDX-License-Identifier: MIT
#include "host/shared/enginesession.h"

#include "host/shared/catalogrefresher.h"
#include "host/shared/savedqueue.h"
#include "plugin/vexa.h"
#include <QSettings>
#include <QUrl>

EngineSession::EngineSession(const QString &baseUri, const QString &pathSuffix, QObject *parent)
    : QObject(parent)
    , m_catalog(pathSuffix)
    , m_installer(&m_catalog, &m_worker, pathSuffix)
    , m_baseUri(baseUri)
{
    m_catalog.updateCatalog();
    m_installer.setBaseUri(baseUri);
    m_installer.setOnline(true);
    m_installer.setWifi(true);
    connect(&m_worker, &Worker::engineReady, this, &EngineSession::started, Qt::QueuedConnection);
    m_worker.setUnpackPause(0); // The pause is there for phones.
    m_worker.setContainedUnpack(true);
}

EngineSession::~EngineSession()
{
    stop();
}

void EngineSession::start()
{
    SavedQueue::removeBrokenLock();
    // Half a refresh is of no use: the next one asks for the version anew.
    SavedQueue::removeIf(
        [](const Request &request) { return CatalogRefresher::isOurs(request.id); });
    m_installer.restore();
    m_worker.start();
}

void EngineSession::stop()
{
    if (!m_worker.isRunning())
        return;
    m_worker.getDownloadManagerIface()->prepareToDestroy();
    m_worker.stop();
    m_worker.wait();
}

bool EngineSession::isRunning() const
{
    return m_worker.isRunning();
}

MapCatalog *EngineSession::catalog()
{
    return &m_catalog;
}

Worker *EngineSession::worker()
{
    return &m_worker;
}

DownloadManagerIface *EngineSession::downloads()
{
    return m_worker.getDownloadManagerIface();
}

RegionInstaller *EngineSession::installer()
{
    return &m_installer;
}

QString EngineSession::baseUri() const
{
    return m_baseUri;
}

QString EngineSession::configuredBaseUri()
{
    const QSettings settings(QStringLiteral("Orvel"), QStringLiteral("Maps"));
    const QString text = settings.value(QStringLiteral("vexa/vexaBaseURI")).toString();
    const QString checked = checkedBaseUri(text);
    return checked.isEmpty() ? VEXA::defaultBaseUri() : checked;
}

QString EngineSession::checkedBaseUri(const QString &text)
{
    const QUrl url(text);
    const bool http =
        url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    if (!url.isValid() || !http || url.host().isEmpty())
        return QString();
    return text.endsWith(QLatin1Char('/')) ? text : text + QLatin1Char('/');
}
