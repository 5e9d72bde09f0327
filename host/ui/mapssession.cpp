// SPDX-License-Identifier: MIT
#include "host/ui/mapssession.h"

#include "catalog/mapcatalog.h"
#include "download/downloadmanageriface.h"
#include "host/shared/datasetswap.h"
#include "host/shared/leftovers.h"
#include "host/shared/loglines.h"
#include "host/shared/regioninstaller.h"
#include "plugin/logger.h"
#include <chrono>
#include <QGuiApplication>
#include <QPalette>
#include <QSettings>

using namespace std::chrono_literals;

namespace {

using Result = CatalogRefresher::Result;

constexpr auto ServerPatience = 30s;
const char *const StyleKey = "ui/style";

// The library and other programs read these; we write what the user chooses.
QSettings applicationSettings()
{
    return QSettings(QStringLiteral("Orvel"), QStringLiteral("Maps"));
}

QSettings ownSettings()
{
    return QSettings(QStringLiteral("vexa"), QStringLiteral("maps"));
}

} // namespace

MapsSession::MapsSession(const QString &baseUri, QObject *parent)
    : MapsSession(baseUri, nullptr, parent)
{ }

MapsSession::MapsSession(const QString &baseUri, std::unique_ptr<NetworkSource> network,
                         QObject *parent)
    : QObject(parent)
    , m_network(network ? std::make_unique<NetworkState>(std::move(network))
                        : std::make_unique<NetworkState>())
    , m_baseUri(baseUri.isEmpty() ? EngineSession::configuredBaseUri() : baseUri)
    , m_update(std::make_unique<MapsUpdate>(this))
    , m_style(ownSettings().value(QLatin1String(StyleKey)).toString())
{
    m_silence.setSingleShot(true);
    m_silence.setInterval(ServerPatience);
    connect(&m_silence, &QTimer::timeout, this, [this] {
        Q_EMIT noticed(tr("The server is silent. Try again later."), true);
        cancelRefresh();
    });
}

MapsSession::~MapsSession()
{
    if (m_locking)
        m_locking->wait();
    m_update.reset();
    m_refresher.reset();
    m_fresh.reset();
    if (m_set)
        m_set->engine.stop();
}

bool MapsSession::opening() const
{
    return m_opening;
}

bool MapsSession::isOpen() const
{
    return m_set != nullptr;
}

QString MapsSession::problem() const
{
    return m_problem;
}

MapCatalog *MapsSession::catalog() const
{
    return isOpen() ? m_set->engine.catalog() : nullptr;
}

RegionInstaller *MapsSession::installer() const
{
    return isOpen() ? m_set->engine.installer() : nullptr;
}

DownloadManagerIface *MapsSession::downloads() const
{
    return isOpen() ? m_set->engine.downloads() : nullptr;
}

CityIndexList *MapsSession::cityIndex() const
{
    return m_cityIndex.get();
}

RegionModel *MapsSession::regions() const
{
    return isOpen() ? &m_set->regions : nullptr;
}

NetworkState *MapsSession::network() const
{
    return m_network.get();
}

MapsUpdate *MapsSession::update() const
{
    return m_update.get();
}

bool MapsSession::ready() const
{
    return m_ready;
}

bool MapsSession::refreshing() const
{
    return m_refresher != nullptr;
}

QString MapsSession::newerVersion() const
{
    return m_newerVersion;
}

QString MapsSession::baseUri() const
{
    return m_baseUri;
}

int MapsSession::logLevel() const
{
    return L::og()->getLogLevel();
}

void MapsSession::setLogLevel(int level)
{
    if (level == logLevel())
        return;
    L::og()->setLogLevel(level);
    applicationSettings().setValue(QStringLiteral("loglevel"), level);
    Q_EMIT logLevelChanged();
}

QString MapsSession::style() const
{
    return m_style;
}

void MapsSession::setStyle(const QString &style)
{
    ownSettings().setValue(QLatin1String(StyleKey), style);
    showStyle(style);
}

void MapsSession::showStyle(const QString &style)
{
    if (style == m_style)
        return;
    m_style = style;
    Q_EMIT styleChanged();
}

bool MapsSession::dark() const
{
    if (!m_style.isEmpty())
        return m_style == QLatin1String("dark");
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness()
        < palette.color(QPalette::WindowText).lightness();
}

double MapsSession::freeSpace() const
{
    return m_freeSpace;
}

QString MapsSession::programVersion()
{
    return QStringLiteral(VEXA_VERSION);
}

void MapsSession::open()
{
    if (m_opening || isOpen())
        return;
    m_opening = true;
    m_problem.clear();
    Q_EMIT openChanged();
    m_lock = std::make_unique<DataSetLock>();
    // A program that was killed may have left a copy running, which the lock waits for.
    m_locking.reset(QThread::create([this] { m_gotLock = m_lock->tryLock(); }));
    connect(m_locking.get(), &QThread::finished, this, &MapsSession::onLocked);
    m_locking->start();
}

void MapsSession::onLocked()
{
    m_locking->wait();
    if (m_gotLock) {
        LogLines::keep(QStringLiteral("open"));
        openDataSet();
    } else {
        m_problem = m_lock->errorString();
        m_lock.reset();
    }
    m_opening = false;
    Q_EMIT openChanged();
}

// What a swap of data sets left half done comes first: a catalogue would make empty folders there.
// The constructor of the engine session loads the catalogue and runs the event loop meanwhile.
void MapsSession::openDataSet()
{
    QString found;
    const DataSetSwap::Recovery recovery = DataSetSwap::recover(&found);
    if (recovery == DataSetSwap::Recovery::Failed) {
        m_problem = found;
        m_lock.reset();
        return;
    }
    Leftovers::remove();
    m_cityIndex = std::make_unique<CityIndexList>();
    m_set = std::make_unique<OpenDataSet>(m_baseUri, m_network.get());
    measureFreeSpace();
    if (m_update->takeUp())
        startEngine();
    else
        restEngine(); // Its queue holds steps of the update.
    if (recovery != DataSetSwap::Recovery::Nothing)
        Q_EMIT noticed(DataSetSwap::describe(recovery), false);
}

void MapsSession::startEngine()
{
    connect(&m_set->engine, &EngineSession::started, this, [this] {
        m_ready = true;
        Q_EMIT readyChanged();
    });
    connect(m_set->engine.installer(), &RegionInstaller::busyChanged, this,
            &MapsSession::measureFreeSpace);
    m_set->engine.start();
}

void MapsSession::restEngine()
{
    m_set->engine.disconnect(this);
    m_set->binding.reset(); // The network is the update's now.
    m_set->engine.stop();
    if (!m_ready)
        return;
    m_ready = false;
    Q_EMIT readyChanged();
}

// The pages keep what they show until there is something else to show.
void MapsSession::renew(bool isNewest)
{
    if (isNewest)
        m_newerVersion.clear();
    QString found;
    if (DataSetSwap::recover(&found) == DataSetSwap::Recovery::Failed) {
        Q_EMIT noticed(found, true); // What is open can still be read.
        return;
    }
    m_fresh = std::make_unique<OpenDataSet>(m_baseUri, m_network.get());
    connect(&m_fresh->regions, &RegionModel::loadingChanged, this, &MapsSession::adoptFresh,
            Qt::QueuedConnection);
    adoptFresh();
}

void MapsSession::adoptFresh()
{
    if (!m_fresh || m_fresh->regions.loading())
        return;
    m_set.swap(m_fresh);
    m_set->regions.disconnect(this);
    Q_EMIT openChanged(); // The pages leave the old objects.
    Q_EMIT refreshingChanged();
    m_fresh.reset();
    measureFreeSpace();
    startEngine();
    Q_EMIT renewed();
}

void MapsSession::refresh()
{
    if (!m_update->blockade().isEmpty()) {
        Q_EMIT noticed(m_update->blockade(), true);
        return;
    }
    if (!m_ready || m_refresher)
        return;
    if (m_set->engine.installer()->busy()) {
        // Their archives belong to the catalogue that they were chosen from.
        Q_EMIT noticed(tr("Let the transfers end, or cancel them, before you look for new maps."),
                       true);
        return;
    }
    if (!m_network->online()) {
        Q_EMIT noticed(tr("There is no network connection."), true);
        return;
    }
    m_refresher = std::make_unique<CatalogRefresher>(m_set->engine.catalog(),
                                                     m_set->engine.downloads(), m_baseUri);
    connect(m_refresher.get(), &CatalogRefresher::progress, &m_silence,
            [this] { m_silence.start(); });
    connect(m_refresher.get(), &CatalogRefresher::fetching, &m_silence,
            [this] { m_silence.start(); });
    connect(m_refresher.get(), &CatalogRefresher::finished, this, &MapsSession::onRefreshed);
    m_silence.start();
    Q_EMIT refreshingChanged();
    m_refresher->start();
}

void MapsSession::cancelRefresh()
{
    if (m_refresher)
        m_refresher->abort();
}

void MapsSession::onRefreshed()
{
    m_silence.stop();
    CatalogRefresher *const refresher = m_refresher.release();
    refresher->deleteLater(); // It is emitting.
    const QString installed = m_set->engine.catalog()->installedMapsVersion();
    m_newerVersion.clear();
    switch (refresher->result()) {
    case Result::Adopted:
    case Result::Renewed:
        Q_EMIT noticed(tr("The list of maps is up to date (version %1).").arg(installed), false);
        break;
    case Result::NewerExists:
        m_newerVersion = refresher->serverVersion();
        Q_EMIT noticed(tr("The server has newer maps (version %1). The installed ones stay at "
                          "version %2.")
                           .arg(m_newerVersion, installed),
                       false);
        break;
    case Result::NetworkFailed:
    case Result::CatalogueFailed:
    case Result::DiskFailed:
        Q_EMIT noticed(refresher->errorString(), true);
        break;
    case Result::Aborted:
    case Result::None:
        break;
    }
    Q_EMIT refreshingChanged();
}

bool MapsSession::setBaseUri(const QString &text)
{
    const QString checked = EngineSession::checkedBaseUri(text.trimmed());
    if (checked.isEmpty())
        return false;
    if (checked == m_baseUri)
        return true;
    m_baseUri = checked;
    applicationSettings().setValue(QStringLiteral("vexa/vexaBaseURI"), checked);
    if (m_set)
        m_set->engine.installer()->setBaseUri(checked);
    Q_EMIT baseUriChanged();
    return true;
}

void MapsSession::measureFreeSpace()
{
    if (!m_set)
        return;
    m_freeSpace = double(m_set->engine.downloads()->getFreeSpace());
    Q_EMIT freeSpaceChanged();
}
