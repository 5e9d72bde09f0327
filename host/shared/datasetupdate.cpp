// SPDX-License-Identifier: MIT
// What is asked of an update, and how it ends.
#include "host/shared/datasetupdate.h"

#include "download/downloadmanageriface.h"
#include "host/shared/diskprobe.h"
#include "host/shared/preparedset.h"
#include "host/shared/savedqueue.h"
#include <algorithm>
#include <QMetaEnum>

using namespace std::chrono_literals;

namespace {

constexpr auto CatalogRetry = 5ms; // while the catalogue is in the middle of something

// Shares of a region's work, as they were found on a phone-like device.
constexpr double DownloadShare = 0.8;
constexpr double UnpackShare = 0.15;

double shareDone(const RegionStatus &status)
{
    const double fraction = std::max(status.fraction(), 0.0);
    switch (status.state) {
    case RegionState::Downloading:
        return fraction * DownloadShare;
    case RegionState::Unpacking:
        return DownloadShare + fraction * UnpackShare;
    case RegionState::Moving:
    case RegionState::Recording:
        return DownloadShare + UnpackShare;
    default:
        return 0;
    }
}

} // namespace

DataSetUpdate::DataSetUpdate(MapCatalog *main, const QString &baseUri, QObject *parent)
    : QObject(parent)
    , m_main(main)
    , m_baseUri(baseUri)
{
    m_silence.setSingleShot(true);
    connect(&m_silence, &QTimer::timeout, this, &DataSetUpdate::onSilence);
}

DataSetUpdate::~DataSetUpdate()
{
    takeApart();
}

DataSetUpdate::State DataSetUpdate::state() const
{
    return m_state;
}

QString DataSetUpdate::stateName() const
{
    QString name = QLatin1String(QMetaEnum::fromType<State>().valueToKey(int(m_state)));
    name[0] = name[0].toLower();
    return name;
}

bool DataSetUpdate::isRunning() const
{
    return m_running;
}

QString DataSetUpdate::fromVersion() const
{
    return m_fromVersion;
}

QString DataSetUpdate::targetVersion() const
{
    return m_targetVersion;
}

QString DataSetUpdate::region() const
{
    return m_region;
}

double DataSetUpdate::fraction() const
{
    switch (m_state) {
    case State::Ready:
    case State::Swapping:
    case State::Done:
    case State::UpToDate:
        return 1;
    default:
        break;
    }
    if (m_wanted.isEmpty())
        return -1;
    // A catalogue without sizes: every region counts the same.
    const bool sized = bytesTotal() > 0;
    double done = 0;
    for (const QString &id : m_wanted) {
        const double share = m_whole.contains(id) ? 1
            : id == m_region                      ? shareDone(m_regionStatus)
                                                  : 0;
        done += share * (sized ? double(m_sizes.value(id)) : 1);
    }
    return std::clamp(done / (sized ? double(bytesTotal()) : double(m_wanted.size())), 0.0, 1.0);
}

qlonglong DataSetUpdate::bytesReceived() const
{
    qint64 bytes = 0;
    for (const QString &id : m_wanted) {
        const bool isUnderWay = id == m_region && !m_whole.contains(id);
        if (isUnderWay && m_regionStatus.state == RegionState::Downloading)
            bytes += m_regionStatus.bytes;
        else if (m_whole.contains(id) || (isUnderWay && shareDone(m_regionStatus) >= DownloadShare))
            bytes += m_sizes.value(id);
    }
    return bytes;
}

qlonglong DataSetUpdate::bytesTotal() const
{
    qint64 bytes = 0;
    for (const QString &id : m_wanted)
        bytes += m_sizes.value(id);
    return bytes;
}

QString DataSetUpdate::errorString() const
{
    return m_errorString;
}

FailureKind DataSetUpdate::failure() const
{
    return m_failure;
}

QStringList DataSetUpdate::missingRegions() const
{
    return m_missing;
}

QStringList DataSetUpdate::regions() const
{
    return m_wanted;
}

bool DataSetUpdate::dropMissing() const
{
    return m_dropMissing;
}

bool DataSetUpdate::swapWhenReady() const
{
    return m_swapWhenReady;
}

void DataSetUpdate::setDropMissing(bool drop)
{
    if (drop == m_dropMissing)
        return;
    m_dropMissing = drop;
    Q_EMIT optionsChanged();
}

void DataSetUpdate::setSwapWhenReady(bool swap)
{
    if (swap == m_swapWhenReady)
        return;
    m_swapWhenReady = swap;
    Q_EMIT optionsChanged();
}

RegionStatus DataSetUpdate::regionStatus() const
{
    return m_regionStatus;
}

QString DataSetUpdate::regionName(const QString &id) const
{
    return m_names.value(id, id);
}

void DataSetUpdate::setPatience(std::chrono::milliseconds patience)
{
    m_silence.setInterval(patience);
}

void DataSetUpdate::start()
{
    if (m_running)
        return;
    beginRun();
    m_discard = false;
    m_errorString.clear();
    m_failure = FailureKind::None;
    m_missing.clear();
    m_wanted.clear();
    m_region.clear();
    m_targetVersion.clear();
    m_fromVersion = m_main->installedMapsVersion();
    setState(State::Checking);
    later(&DataSetUpdate::check);
}

void DataSetUpdate::swap()
{
    if (m_running || m_state != State::Ready)
        return;
    beginRun();
    m_swapNow = true;
    later(&DataSetUpdate::openPrepared); // The main set may have changed since it became ready.
}

void DataSetUpdate::stop()
{
    // A swap that has begun comes to its end.
    if (m_running && m_state != State::Swapping)
        end(State::Stopped);
}

void DataSetUpdate::cancel()
{
    if (m_running && m_state == State::Swapping)
        return;
    if (!m_running)
        beginRun();
    m_errorString.clear();
    m_failure = FailureKind::None;
    m_discard = true;
    end(State::Cancelled);
}

void DataSetUpdate::beginRun()
{
    ++m_run;
    m_running = true;
    m_swapNow = false;
    m_end = State::Idle;
}

// The first that asks for an end has it.
void DataSetUpdate::end(State state)
{
    if (m_end != State::Idle)
        return;
    m_end = state;
    later(&DataSetUpdate::conclude);
}

void DataSetUpdate::fail(FailureKind kind, const QString &reason)
{
    if (m_end != State::Idle)
        return;
    m_failure = kind;
    m_errorString = reason;
    end(State::Failed);
}

void DataSetUpdate::conclude()
{
    takeApart();
    State state = m_end;
    PreparedSet prepared;
    if (m_discard && !prepared.discard()) {
        state = State::Failed;
        m_failure = FailureKind::Disk;
        m_errorString = prepared.errorString();
    }
    ++m_run; // What is still queued for this run is not run any more.
    m_running = false;
    setState(state);
    Q_EMIT finished();
}

void DataSetUpdate::takeApart()
{
    m_silence.stop();
    m_probe.reset();
    closeSession();
    m_region.clear();
    m_regionStatus = RegionStatus();
}

// Waits for the engine, at most for the end of a move.
void DataSetUpdate::closeSession()
{
    if (!m_session)
        return;
    const bool hadRefresher = m_refresher != nullptr;
    m_refresher.reset();
    // What they say while they end is of no use, and would find no session.
    for (QObject *sender :
         {static_cast<QObject *>(m_session.get()), static_cast<QObject *>(m_session->installer()),
          static_cast<QObject *>(m_session->downloads())})
        sender->disconnect(this);
    m_session.reset();
    if (hadRefresher)
        SavedQueue::removeIf(
            [](const Request &request) { return CatalogRefresher::isOurs(request.id); });
}

void DataSetUpdate::later(Step step)
{
    const int run = m_run;
    QMetaObject::invokeMethod(
        this, [this, step, run] { runStep(step, run); }, Qt::QueuedConnection);
}

// Loading and changing a catalogue runs the event loop: what is posted then has to wait, since a
// step may end the session under the catalogue's feet.
void DataSetUpdate::runStep(Step step, int run)
{
    if (run != m_run)
        return;
    if (m_inStep || isInCatalog()) {
        QTimer::singleShot(CatalogRetry, this, [this, step, run] { runStep(step, run); });
        return;
    }
    // Once an end is asked for, only that is left to do.
    if (m_end != State::Idle && step != &DataSetUpdate::conclude)
        return;
    m_inStep = true;
    (this->*step)();
    m_inStep = false;
}

bool DataSetUpdate::isInCatalog() const
{
    return m_session && (m_session->catalog()->bussy() || m_session->installer()->isInCatalog());
}

void DataSetUpdate::setState(State state)
{
    if (m_state == state)
        return;
    m_state = state;
    Q_EMIT stateChanged();
    Q_EMIT progressChanged();
}

void DataSetUpdate::noteNews()
{
    if (m_running && m_silence.interval() > 0)
        m_silence.start();
}

void DataSetUpdate::onSilence()
{
    if (!waitsForServer()) {
        noteNews();
        return;
    }
    const QString trouble = DiskProbe::trouble();
    if (!trouble.isEmpty()) {
        fail(FailureKind::Disk, trouble);
        return;
    }
    fail(FailureKind::Network,
         tr("The server has been silent for %1 s; giving up.").arg(m_silence.interval() / 1000));
}

bool DataSetUpdate::waitsForServer() const
{
    if (m_probe)
        return true;
    if (!m_session || !m_session->isRunning())
        return false;
    const QVariantList requests = m_session->downloads()->getRequests();
    const int type =
        requests.isEmpty() ? 0 : requests.first().toMap().value(QStringLiteral("type")).toInt();
    return type == DownloadRequest || type == TestDownloadRequest;
}
