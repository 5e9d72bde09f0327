// SPDX-License-Identifier: MIT
#include "download/downloadmanager.h"
#include "testutils/temporaryhome.h"

#include <functional>
#include <QtTest>

namespace {

// Carried out where the engine says what it has decided, just before it acts on it: there another
// thread can come in between.
QString marker;
std::function<void()> inBetween;

void lookForMarker(QtMsgType, const QMessageLogContext &, const QString &text)
{
    if (!inBetween || !text.contains(marker))
        return;
    const std::function<void()> once = std::move(inBetween);
    inBetween = nullptr;
    once();
}

} // namespace

class NetworkChangeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aNetworkThatComesMeanwhileIsNotMissed();
    void aNetworkThatGoesMeanwhileIsNotUsed();

private:
    std::unique_ptr<TemporaryHome> m_home;
    QtMessageHandler m_previous = nullptr;
};

void NetworkChangeTest::init()
{
    m_home = std::make_unique<TemporaryHome>();
    L::og()->setLogLevel(L::Info);
    m_previous = qInstallMessageHandler(lookForMarker);
}

void NetworkChangeTest::cleanup()
{
    qInstallMessageHandler(m_previous);
    L::og()->setLogLevel(L::Warning);
    m_home.reset();
}

void NetworkChangeTest::aNetworkThatComesMeanwhileIsNotMissed()
{
    RequestQueue<Request> queue(nullptr);
    DownloadManager manager(&queue, nullptr);
    marker = QStringLiteral("Application is not allowed to go online");
    bool came = false;
    inBetween = [&] {
        came = true;
        manager.setHasWiFi(true);
        manager.allowGoOnline(true);
    };

    manager.updateWifiState();

    // Nobody would ever have lifted it.
    QVERIFY(came);
    QVERIFY(!manager.suspended());
}

void NetworkChangeTest::aNetworkThatGoesMeanwhileIsNotUsed()
{
    RequestQueue<Request> queue(nullptr);
    DownloadManager manager(&queue, nullptr);
    manager.setHasWiFi(true);
    manager.allowGoOnline(true);
    marker = QStringLiteral("Application is allowed to go online");
    bool went = false;
    inBetween = [&] {
        went = true;
        manager.allowGoOnline(false);
    };

    manager.updateWifiState();

    QVERIFY(went);
    QVERIFY(manager.suspended());
}

QTEST_GUILESS_MAIN(NetworkChangeTest)
#include "tst_networkchange.moc"
