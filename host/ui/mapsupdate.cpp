// SPDX-License-Identifier: MIT
#include "host/ui/mapsupdate.h"

#include "catalog/mapcatalog.h"
#include "host/shared/datasetswap.h"
#include "host/shared/networkstate.h"
#include "host/shared/preparedset.h"
#include "host/ui/mapssession.h"
#include <chrono>

using namespace std::chrono_literals;
using State = DataSetUpdate::State;

namespace {

constexpr auto ServerPatience = 30s;

} // namespace

MapsUpdate::MapsUpdate(MapsSession *session)
    : m_session(session)
{
    connect(session->network(), &NetworkState::changed, this, &MapsUpdate::onNetworkChanged);
    connect(session, &MapsSession::refreshingChanged, this, &MapsUpdate::hindranceChanged);
    connect(session, &MapsSession::renewed, this, &MapsUpdate::onRenewed);
    connect(this, &MapsUpdate::changed, this, &MapsUpdate::hindranceChanged);
    connect(this, &MapsUpdate::backupChanged, this, &MapsUpdate::hindranceChanged);
}

MapsUpdate::~MapsUpdate()
{
    for (QThread *thread : {m_measuring.get(), m_remover.get()}) {
        if (thread)
            thread->wait();
    }
}

QString MapsUpdate::state() const
{
    return m_state;
}

bool MapsUpdate::running() const
{
    return m_running;
}

bool MapsUpdate::canStop() const
{
    return m_work && m_work->state() != State::Swapping
        && (m_work->isRunning() || m_state == QLatin1String("held"));
}

bool MapsUpdate::prepared() const
{
    return m_prepared;
}

bool MapsUpdate::whole() const
{
    return m_prepared && !m_unfinished;
}

QString MapsUpdate::blockade() const
{
    if (m_running)
        return tr("All maps are being updated. No other map can be installed or removed until "
                  "that is done.");
    if (m_unfinished)
        return tr("An update of all maps is not finished. Go on with it, or give it up, before you "
                  "install or remove maps.");
    return QString();
}

QString MapsUpdate::hindrance() const
{
    QString busy = busyReason();
    if (!busy.isEmpty())
        return busy;
    if (!m_backupVersion.isEmpty())
        return tr("The old maps of the last update are still kept. Remove them first.");
    if (!m_session->network()->online())
        return tr("There is no network connection.");
    if (!networkUsable())
        return tr("Downloads wait for Wi-Fi.");
    return QString();
}

QString MapsUpdate::fromVersion() const
{
    return m_fromVersion;
}

QString MapsUpdate::targetVersion() const
{
    return m_targetVersion;
}

QString MapsUpdate::errorString() const
{
    return m_errorString;
}

QStringList MapsUpdate::missingRegions() const
{
    return m_missing;
}

QString MapsUpdate::region() const
{
    return m_work ? m_work->regionName(m_work->region()) : QString();
}

double MapsUpdate::fraction() const
{
    return m_work ? m_work->fraction() : -1;
}

double MapsUpdate::bytesReceived() const
{
    return m_work ? double(m_work->bytesReceived()) : 0;
}

double MapsUpdate::bytesTotal() const
{
    return m_work ? double(m_work->bytesTotal()) : 0;
}

QString MapsUpdate::backupVersion() const
{
    return m_backupVersion;
}

double MapsUpdate::backupSize() const
{
    return m_backupSize;
}

bool MapsUpdate::removing() const
{
    return m_remover != nullptr;
}

QStringList MapsUpdate::lostRegions() const
{
    return m_lost;
}

// A run that died right behind the exchange of the maps has nothing left to do but to say so.
bool MapsUpdate::takeUp()
{
    connect(m_session->installer(), &RegionInstaller::busyChanged, this,
            &MapsUpdate::hindranceChanged);
    const UpdateState saved = UpdateState::read();
    lookForPrepared();
    lookForBackup();
    if (saved.phase == UpdateState::Phase::Swapping && !m_prepared && !m_backupVersion.isEmpty()
        && m_session->catalog()->installedMapsVersion() == saved.version) {
        PreparedSet().discard(); // Only its lists are left.
        m_fromVersion = saved.fromVersion;
        m_targetVersion = saved.version;
        setState(QStringLiteral("done"));
    } else {
        setState(m_prepared ? QStringLiteral("prepared") : QStringLiteral("idle"));
    }
    return !m_unfinished;
}

void MapsUpdate::start(bool dropMissing)
{
    const QString why = hindrance();
    if (!why.isEmpty()) {
        refuse(why);
        return;
    }
    m_running = true;
    m_held = false;
    m_dropMissing = dropMissing;
    m_session->restEngine();
    work()->setDropMissing(dropMissing);
    m_work->start();
}

void MapsUpdate::stop()
{
    if (!canStop())
        return;
    m_held = false;
    if (m_work->isRunning())
        m_work->stop();
    else
        conclude(QStringLiteral("prepared"));
}

void MapsUpdate::giveUp()
{
    const bool mayGiveUp = canStop() || (m_prepared && !m_running);
    if (!mayGiveUp)
        return;
    const QString busy = m_running ? QString() : busyReason();
    if (!busy.isEmpty()) {
        refuse(busy);
        return;
    }
    m_running = true;
    m_held = false;
    m_session->restEngine();
    work()->cancel();
    Q_EMIT changed();
}

void MapsUpdate::goBack()
{
    const QString busy = busyReason();
    if (!busy.isEmpty()) {
        refuse(busy);
        return;
    }
    m_running = true;
    m_session->restEngine();
    setState(QStringLiteral("goingBack"));
    DataSetUpdate back(m_session->catalog(), m_session->baseUri());
    const bool isBack = back.undo(true);
    m_errorString = back.errorString();
    if (!isBack)
        refuse(m_errorString);
    conclude(QStringLiteral("prepared"));
}

// Nothing else touches the backup: all that would is refused meanwhile.
void MapsUpdate::removeBackup()
{
    if (m_running || m_remover) {
        refuse(busyReason());
        return;
    }
    m_remover.reset(QThread::create([this] {
        DataSetSwap swap {QString(UpdateSuffix)};
        m_removalError = swap.clearBackup() ? QString() : swap.errorString();
    }));
    connect(m_remover.get(), &QThread::finished, this, &MapsUpdate::onBackupRemoved);
    m_remover->start();
    Q_EMIT changed();
}

void MapsUpdate::onBackupRemoved()
{
    m_remover->wait();
    m_remover.reset();
    if (!m_removalError.isEmpty())
        refuse(m_removalError);
    lookForBackup();
    m_session->measureFreeSpace();
    if (m_backupVersion.isEmpty())
        acknowledge();
    Q_EMIT changed();
}

void MapsUpdate::acknowledge()
{
    if (m_running)
        return;
    lookForPrepared();
    setState(m_prepared ? QStringLiteral("prepared") : QStringLiteral("idle"));
}

void MapsUpdate::look()
{
    if (m_running || !m_session->isOpen())
        return;
    lookForBackup();
    m_session->measureFreeSpace();
}

bool MapsUpdate::networkUsable() const
{
    const NetworkState *const network = m_session->network();
    return network->online() && (network->wifi() || network->mobileAllowed());
}

QString MapsUpdate::busyReason() const
{
    if (m_running)
        return tr("The maps are being changed already.");
    if (m_remover)
        return tr("The old maps are being removed.");
    if (!m_session->isOpen())
        return tr("The maps are not open yet.");
    if (m_session->refreshing() || m_session->catalog()->bussy())
        return tr("The list of maps is being fetched. Wait until that is done.");
    if (m_session->installer()->busy())
        return tr("Let the transfers end, or cancel them, before you update all maps.");
    return QString();
}

bool MapsUpdate::refuse(const QString &why)
{
    Q_EMIT m_session->noticed(why, true);
    return false;
}

DataSetUpdate *MapsUpdate::work()
{
    if (m_work)
        return m_work.get();
    m_work = std::make_unique<DataSetUpdate>(m_session->catalog(), m_session->baseUri());
    m_work->setPatience(ServerPatience);
    connect(m_work.get(), &DataSetUpdate::stateChanged, this, &MapsUpdate::copyValues);
    connect(m_work.get(), &DataSetUpdate::progressChanged, this, &MapsUpdate::progressChanged);
    // Queued: it is destroyed there.
    connect(m_work.get(), &DataSetUpdate::finished, this, &MapsUpdate::onFinished,
            Qt::QueuedConnection);
    return m_work.get();
}

// The network may have come back before the work had ended because of it.
void MapsUpdate::onFinished()
{
    if (!m_work || m_work->isRunning())
        return;
    switch (m_work->state()) {
    case State::Stopped:
        if (m_held) {
            setState(QStringLiteral("held"));
            onNetworkChanged();
        } else {
            conclude(QStringLiteral("prepared"));
        }
        break;
    case State::Cancelled:
        conclude(QStringLiteral("idle"));
        break;
    default:
        conclude(m_work->stateName());
    }
}

void MapsUpdate::onNetworkChanged()
{
    Q_EMIT hindranceChanged();
    if (!m_work || !m_running)
        return;
    if (m_work->isRunning()) {
        if (!networkUsable() && !m_held && canStop()) {
            m_held = true;
            m_work->stop();
        }
    } else if (m_held && m_state == QLatin1String("held") && networkUsable()) {
        m_held = false;
        m_work->start();
    }
}

// With an unfinished update the engine's queue belongs to that, and the engine goes on resting.
void MapsUpdate::conclude(const QString &state)
{
    m_work.reset();
    m_held = false;
    lookForPrepared();
    const bool goesOn = !m_unfinished;
    m_running = goesOn; // until the session has opened the maps anew
    // There may be nothing prepared yet, or no more.
    setState(state == QLatin1String("prepared") && !m_prepared ? QStringLiteral("idle") : state);
    Q_EMIT progressChanged();
    if (goesOn)
        m_session->renew(state == QLatin1String("done") || state == QLatin1String("upToDate"));
}

void MapsUpdate::onRenewed()
{
    connect(m_session->installer(), &RegionInstaller::busyChanged, this,
            &MapsUpdate::hindranceChanged);
    m_running = false;
    lookForBackup();
    Q_EMIT changed();
}

void MapsUpdate::setState(const QString &state)
{
    m_state = state;
    Q_EMIT changed();
}

void MapsUpdate::copyValues()
{
    if (!m_work)
        return;
    if (!m_work->fromVersion().isEmpty())
        m_fromVersion = m_work->fromVersion();
    if (!m_work->targetVersion().isEmpty())
        m_targetVersion = m_work->targetVersion();
    m_errorString = m_work->errorString();
    m_missing = namesOf(m_work->missingRegions());
    // How it ended is for onFinished() to tell.
    if (m_work->isRunning())
        m_state = m_work->stateName();
    Q_EMIT changed();
}

void MapsUpdate::lookForPrepared()
{
    const UpdateState saved = UpdateState::read();
    m_unfinished = saved.isUnfinished();
    m_prepared = m_unfinished || PreparedSet::exists();
    if (m_prepared && !saved.version.isEmpty())
        m_targetVersion = saved.version;
}

void MapsUpdate::lookForBackup()
{
    m_backupVersion = DataSetSwap::backupExists() ? DataSetSwap::backupVersion() : QString();
    m_lost.clear();
    m_backupSize = -1;
    if (!m_backupVersion.isEmpty()) {
        m_lost =
            namesOf(DataSetUpdate(m_session->catalog(), m_session->baseUri()).regionsSinceBackup());
        measureBackup();
    }
    Q_EMIT backupChanged();
}

// Many thousands of files: in a thread.
void MapsUpdate::measureBackup()
{
    if (m_measuring && m_measuring->isRunning())
        return;
    m_measuring.reset(QThread::create([this] { m_measured = double(DataSetSwap::backupBytes()); }));
    connect(m_measuring.get(), &QThread::finished, this, [this] {
        m_backupSize = m_backupVersion.isEmpty() ? -1 : m_measured.load();
        Q_EMIT backupChanged();
    });
    m_measuring->start();
}

QStringList MapsUpdate::namesOf(const QStringList &ids) const
{
    QStringList names;
    for (const QString &id : ids) {
        const QString name = m_session->regions()->get(id).value(QStringLiteral("name")).toString();
        names.append(name.isEmpty() ? id : name);
    }
    return names;
}
