// SPDX-License-Identifier: MIT
#include "plugin/vexasettings.h"

#include "testutils/temporaryhome.h"
#include <atomic>
#include <QDir>
#include <QFile>
#include <QPointer>
#include <QtTest>
#include <sys/file.h>
#include <thread>

class VexaSettingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void makesTheObjectWhenItIsFirstAskedFor();
    void keepsItsFileApartFromTheApplications();
    void destroyForgetsTheObjectAndIsHarmlessTwice();
    void givesANewObjectAfterDestroy();
    void destroyWritesWhatWasNotSynced();
    void belongsToNoThread();
    void outlivesTheThreadThatMadeIt();
    void lockerMakesTheObject();
    void twoThreadsNeverMixTheirGroups();
    void destroyWaitsForTheLocker();
    void writesUtf8();
    void readsWhatEitherQtWrote_data();
    void readsWhatEitherQtWrote();
    void losesOnlyTheBadLinesOfADamagedFile();
    void setsAFileAsideThatWouldEndTheProgram_data();
    void setsAFileAsideThatWouldEndTheProgram();
    void keepsAFileWhoseTextsOnlyLookPacked();
    void removesTheEmptyLockOfAKilledRun();
    void leavesALockThatSomebodyHolds();
};

namespace {

QString settingsFile(const TemporaryHome &home)
{
    return home.settingsFolder() + QStringLiteral("/vexa/vexa.conf");
}

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("%s cannot be written", qPrintable(path));
}

} // namespace

void VexaSettingsTest::makesTheObjectWhenItIsFirstAskedFor()
{
    const TemporaryHome home;
    QVERIFY(!VexaSettings::settings);

    QSettings *settings = VexaSettings::instance();

    QVERIFY(settings);
    QCOMPARE(VexaSettings::settings, settings);
    QCOMPARE(VexaSettings::instance(), settings);
    QCOMPARE(settings->organizationName(), QStringLiteral("vexa"));
    QCOMPARE(settings->applicationName(), QStringLiteral("vexa"));
    QCOMPARE(settings->format(), QSettings::NativeFormat);
    QCOMPARE(settings->scope(), QSettings::UserScope);
    QCOMPARE(settings->fileName(), settingsFile(home));
    QVERIFY(!settings->parent());
    QVERIFY(settings->allKeys().isEmpty());
}

void VexaSettingsTest::keepsItsFileApartFromTheApplications()
{
    const TemporaryHome home;
    QSettings application(QStringLiteral("Orvel"), QStringLiteral("Maps"));
    application.setValue(QStringLiteral("loglevel"), 3);
    application.sync();

    VexaSettings::instance()->setValue(QStringLiteral("isSuspended"), 1);
    VexaSettings::instance()->sync();

    QCOMPARE(readAll(settingsFile(home)), QByteArray("[General]\nisSuspended=1\n"));
    QCOMPARE(readAll(home.settingsFolder() + QStringLiteral("/Orvel/Maps.conf")),
             QByteArray("[General]\nloglevel=3\n"));
    QCOMPARE(VexaSettings::instance()->allKeys(), QStringList {QStringLiteral("isSuspended")});
}

void VexaSettingsTest::destroyForgetsTheObjectAndIsHarmlessTwice()
{
    const TemporaryHome home;
    const QPointer<QSettings> settings = VexaSettings::instance();

    VexaSettings::destroy();
    QVERIFY(!VexaSettings::settings);
    QVERIFY(settings.isNull());

    VexaSettings::destroy();
    QVERIFY(!VexaSettings::settings);
}

void VexaSettingsTest::givesANewObjectAfterDestroy()
{
    const TemporaryHome home;
    VexaSettings::instance()->setValue(QStringLiteral("a"), 1);
    VexaSettings::instance()->sync();
    const QPointer<QSettings> old = VexaSettings::instance();
    VexaSettings::destroy();

    QSettings *fresh = VexaSettings::instance();

    QVERIFY(fresh);
    QVERIFY(old.isNull());
    QCOMPARE(VexaSettings::settings, fresh);
    QCOMPARE(fresh->value(QStringLiteral("a")).toInt(), 1);
}

void VexaSettingsTest::destroyWritesWhatWasNotSynced()
{
    const TemporaryHome home;
    VexaSettings::Locker()->setValue(QStringLiteral("a"), 1);

    VexaSettings::destroy();

    QCOMPARE(readAll(settingsFile(home)), QByteArray("[General]\na=1\n"));
}

void VexaSettingsTest::belongsToNoThread()
{
    const TemporaryHome home;

    // Else the event loop of the thread that made it could write while another one uses it.
    QVERIFY(!VexaSettings::instance()->thread());
    VexaSettings::Locker()->setValue(QStringLiteral("a"), 1);
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QVERIFY(!QFile::exists(settingsFile(home)));

    VexaSettings::Locker()->sync();
    QVERIFY(QFile::exists(settingsFile(home)));
}

void VexaSettingsTest::outlivesTheThreadThatMadeIt()
{
    const TemporaryHome home;
    std::thread maker([] { VexaSettings::Locker()->setValue(QStringLiteral("a"), 1); });
    maker.join();

    VexaSettings::Locker settings;
    QCOMPARE(settings->value(QStringLiteral("a")).toInt(), 1);
    settings->setValue(QStringLiteral("b"), 2);
    settings->sync();

    QCOMPARE(readAll(settingsFile(home)), QByteArray("[General]\na=1\nb=2\n"));
}

void VexaSettingsTest::lockerMakesTheObject()
{
    const TemporaryHome home;

    const VexaSettings::Locker settings;

    QVERIFY(VexaSettings::settings);
    QCOMPARE(&*settings, VexaSettings::settings);
    // Whoever holds it may still ask for the object.
    QCOMPARE(VexaSettings::instance(), VexaSettings::settings);
}

void VexaSettingsTest::twoThreadsNeverMixTheirGroups()
{
    const TemporaryHome home;
    constexpr int Rounds = 60;

    std::thread worker([] {
        for (int i = 0; i < Rounds; ++i) {
            VexaSettings::Locker settings;
            settings->beginGroup(QStringLiteral("download"));
            settings->setValue(QStringLiteral("bytesReceived"), i);
            settings->setValue(QStringLiteral("url"), i);
            settings->endGroup();
            settings->sync();
        }
    });
    for (int i = 0; i < Rounds; ++i) {
        VexaSettings::Locker settings;
        settings->beginWriteArray(QStringLiteral("requests"), 3);
        for (int item = 0; item < 3; ++item) {
            settings->setArrayIndex(item);
            settings->setValue(QStringLiteral("id"), i);
        }
        settings->endArray();
        settings->sync();
    }
    worker.join();

    VexaSettings::Locker settings;
    QStringList keys = settings->allKeys();
    keys.sort();
    QCOMPARE(keys,
             (QStringList {QStringLiteral("download/bytesReceived"), QStringLiteral("download/url"),
                           QStringLiteral("requests/1/id"), QStringLiteral("requests/2/id"),
                           QStringLiteral("requests/3/id"), QStringLiteral("requests/size")}));
    QCOMPARE(settings->value(QStringLiteral("download/url")).toInt(), Rounds - 1);
    QCOMPARE(settings->value(QStringLiteral("requests/3/id")).toInt(), Rounds - 1);
}

void VexaSettingsTest::destroyWaitsForTheLocker()
{
    const TemporaryHome home;
    std::atomic<bool> isDestroyed {false};
    std::thread destroyer;
    {
        VexaSettings::Locker settings;
        destroyer = std::thread([&] {
            VexaSettings::destroy();
            isDestroyed = true;
        });
        for (int i = 0; i < 50; ++i) {
            settings->setValue(QStringLiteral("a"), i);
            settings->sync();
        }
        QVERIFY(!isDestroyed);
        QCOMPARE(VexaSettings::settings, &*settings);
    }
    destroyer.join();

    QVERIFY(!VexaSettings::settings);
}

void VexaSettingsTest::writesUtf8()
{
    const TemporaryHome home;

    VexaSettings::Locker settings;
    settings->setValue(QStringLiteral("url"), QStringLiteral("\u00e9\u20ac \u0416"));
    settings->sync();

    QCOMPARE(readAll(settingsFile(home)),
             QByteArray("[General]\nurl=\xc3\xa9\xe2\x82\xac \xd0\x96\n"));
}

void VexaSettingsTest::readsWhatEitherQtWrote_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("UTF-8") << QByteArray("[General]\nurl=\xc3\xa9\xe2\x82\xac \xd0\x96\n");
    QTest::newRow("escapes") << QByteArray("[General]\nurl=\\xe9\\x20ac \\x416\n");
    QTest::newRow("quoted") << QByteArray("[General]\nurl=\"\xc3\xa9\\x20ac \xd0\x96\"\n");
}

void VexaSettingsTest::readsWhatEitherQtWrote()
{
    QFETCH(QByteArray, bytes);
    const TemporaryHome home;
    write(settingsFile(home), bytes);

    QCOMPARE(VexaSettings::Locker()->value(QStringLiteral("url")).toString(),
             QStringLiteral("\u00e9\u20ac \u0416"));
}

void VexaSettingsTest::losesOnlyTheBadLinesOfADamagedFile()
{
    const TemporaryHome home;
    write(settingsFile(home), "[General]\nfirst=1\n%%% no key\nlast=2\n[cut");

    VexaSettings::Locker settings;
    QCOMPARE(settings->value(QStringLiteral("first")).toInt(), 1);
    QCOMPARE(settings->value(QStringLiteral("last")).toInt(), 2);
    settings->setValue(QStringLiteral("more"), 3);
    settings->sync();

    QCOMPARE(readAll(settingsFile(home)), QByteArray("[General]\nfirst=1\nlast=2\nmore=3\n"));
}

void VexaSettingsTest::setsAFileAsideThatWouldEndTheProgram_data()
{
    QTest::addColumn<QByteArray>("value");
    // A list of four thousand million values. QSettings would make room for all of them.
    const QByteArray list("(\\0\\0\\0\\t\\xff\\xff\\xff\\xff)");
    QTest::newRow("a packed list") << "@Variant" + list;
    QTest::newRow("a packed time") << "@DateTime" + list;
    QTest::newRow("in quotes") << "\"@Variant" + list + '"';
    QTest::newRow("behind another value") << "x, @Variant" + list;
    QTest::newRow("by numbers") << "\\x40\\126ariant" + list;
    QTest::newRow("by numbers that are too long") << "\\x10040Variant" + list;
    QTest::newRow("with quotes between") << "@Var\"\" iant" + list;
    QTest::newRow("with a mark between") << "@Var\"\"\xef\xbb\xbfiant" + list;
    QTest::newRow("with escapes that mean nothing") << "@Var\\q\\xiant" + list;
    QTest::newRow("in two lines") << "@Var\\\niant" + list;
    QTest::newRow("in two lines with two line ends") << "@Var\\\r\niant" + list;
}

void VexaSettingsTest::setsAFileAsideThatWouldEndTheProgram()
{
    QFETCH(QByteArray, value);
    const TemporaryHome home;
    const QByteArray damaged = "[requests]\n1\\id=" + value + "\nsize=1\n";
    write(settingsFile(home), damaged);
    write(settingsFile(home) + QLatin1String(".damaged"), "of an earlier time");

    const VexaSettings::Locker settings;

    QCOMPARE(settings->value(QStringLiteral("requests/1/id")).toString(), QString());
    QCOMPARE(settings->allKeys(), QStringList());
    QCOMPARE(readAll(settingsFile(home) + QLatin1String(".damaged")), damaged);
    settings->setValue(QStringLiteral("key"), 1);
    settings->sync();
    QCOMPARE(settings->status(), QSettings::NoError);
    QVERIFY(readAll(settingsFile(home)).contains("key=1"));
}

void VexaSettingsTest::keepsAFileWhoseTextsOnlyLookPacked()
{
    const TemporaryHome home;
    const QStringList texts {QStringLiteral("@Variant(x)"), QStringLiteral("@DateTime("),
                             QStringLiteral("@Variant(") + QChar(0),
                             QStringLiteral("http://me@Vienna/@Variants/"), QStringLiteral("@")};
    for (const QString &text : texts) {
        VexaSettings::Locker()->setValue(QStringLiteral("key"), text);
        VexaSettings::destroy(); // and written

        QCOMPARE(VexaSettings::Locker()->value(QStringLiteral("key")).toString(), text);
    }
    QVERIFY(!QFile::exists(settingsFile(home) + QLatin1String(".damaged")));
}

void VexaSettingsTest::removesTheEmptyLockOfAKilledRun()
{
    const TemporaryHome home;
    const QString lockFile = settingsFile(home) + QStringLiteral(".lock");
    QVERIFY(QDir().mkpath(QFileInfo(lockFile).path()));
    QFile lock(lockFile);
    QVERIFY(lock.open(QIODevice::WriteOnly));
    lock.close();

    VexaSettings::instance();

    QVERIFY(!lock.exists());
}

void VexaSettingsTest::leavesALockThatSomebodyHolds()
{
    const TemporaryHome home;
    const QString lockFile = settingsFile(home) + QStringLiteral(".lock");
    QVERIFY(QDir().mkpath(QFileInfo(lockFile).path()));
    QFile lock(lockFile);
    QVERIFY(lock.open(QIODevice::WriteOnly));
    QCOMPARE(::flock(lock.handle(), LOCK_EX), 0);

    VexaSettings::instance();
    QVERIFY(lock.exists());
    lock.write("4711\nan owner\n");
    lock.close(); // which lets go of the lock
    VexaSettings::destroy();
    VexaSettings::instance();

    QVERIFY(lock.exists());
}

QTEST_GUILESS_MAIN(VexaSettingsTest)
#include "tst_vexasettings.moc"
