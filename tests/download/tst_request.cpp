// SPDX-License-Identifier: MIT
#include "download/request.h"

#include "plugin/qtcompat.h"
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString Url = QStringLiteral("http://h/map5/FI.zip");

QStringList list(const char *first, const char *second)
{
    return {QString::fromUtf8(first), QString::fromUtf8(second)};
}

} // namespace

class RequestTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void newRequestAsksForNothing();
    void isMadeOfItsFiveFieldsInOrder();
    void numbersOfTypesAndStatesAreFixed();
    void writesTheKeysOfItsType_data();
    void writesTheKeysOfItsType();
    void convertsAPayloadOfAnotherKind_data();
    void convertsAPayloadOfAnotherKind();
    void comesBackFromTheDiskAsItWas_data();
    void comesBackFromTheDiskAsItWas();
    void unknownTypeLeavesThePayloadAlone_data();
    void unknownTypeLeavesThePayloadAlone();
    void missingKeysReadAsEmptyOrZero_data();
    void missingKeysReadAsEmptyOrZero();
    void valuesOfTheWrongKindAreConverted();
    void readingReplacesWhatWasThere();
    void writesAtThePositionThatTheCallerChose();
    void twoRequestsAreEqualWhateverTheirState();
    void isAValueThatCanBeCopied();

private:
    QString path() const { return m_dir->filePath(QStringLiteral("s.conf")); }
    /** A reader that has seen nothing of what others have in memory. */
    Request readFromDisk();

    std::unique_ptr<QTemporaryDir> m_dir;
    int m_copies = 0;
};

void RequestTest::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
}

Request RequestTest::readFromDisk()
{
    const QString copy = m_dir->filePath(QStringLiteral("copy%1.conf").arg(m_copies++));
    QFile::copy(path(), copy);
    QSettings settings(copy, QSettings::IniFormat);
    VexaCompat::useUtf8(settings);
    Request request;
    request.deSerialize(settings);
    return request;
}

void RequestTest::newRequestAsksForNothing()
{
    const Request request;

    QVERIFY(request.id.isNull());
    QCOMPARE(request.type, 0);
    QVERIFY(!request.payload.isValid());
    QVERIFY(request.url.isNull());
    QCOMPARE(request.state, 0);
}

void RequestTest::isMadeOfItsFiveFieldsInOrder()
{
    const Request request(QStringLiteral("FI"), 3, QStringLiteral("/a.zip"), Url, 2);

    QCOMPARE(request.id, QStringLiteral("FI"));
    QCOMPARE(request.type, 3);
    QCOMPARE(request.payload, QVariant(QStringLiteral("/a.zip")));
    QCOMPARE(request.url, Url);
    QCOMPARE(request.state, 2);
    QCOMPARE(Request(QString(), 1, QVariant(), QString()).state, 0);
}

void RequestTest::numbersOfTypesAndStatesAreFixed()
{
    QCOMPARE(int(TestDownloadRequest), 1);
    QCOMPARE(int(DownloadRequest), 2);
    QCOMPARE(int(UncompressRequest), 3);
    QCOMPARE(int(MoveRequest), 4);
    QCOMPARE(int(StateNew), 0);
    QCOMPARE(int(StateDone), 2);
    QCOMPARE(int(StateFailed), 3);
    QCOMPARE(int(StateAborted), 4);
}

void RequestTest::writesTheKeysOfItsType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("payload");
    QTest::addColumn<QVariantMap>("payloadKeys");
    const QString file = QStringLiteral("/home/u/FI.zip");
    const QVariantMap fileName {{QStringLiteral("filename"), file}};

    QTest::newRow("test download") << 1 << QVariant(file) << fileName;
    QTest::newRow("download") << 2 << QVariant(file) << fileName;
    QTest::newRow("uncompress") << 3 << QVariant(file)
                                << QVariantMap {{QStringLiteral("archiveName"), file}};
    QTest::newRow("move") << 4 << QVariant(list("/from", "/to"))
                          << QVariantMap {{QStringLiteral("source"), QStringLiteral("/from")},
                                          {QStringLiteral("dest"), QStringLiteral("/to")}};
    QTest::newRow("nothing") << 0 << QVariant(file) << QVariantMap();
    QTest::newRow("below the known ones") << -1 << QVariant(file) << QVariantMap();
    QTest::newRow("above the known ones") << 5 << QVariant(list("/a", "/b")) << QVariantMap();
}

void RequestTest::writesTheKeysOfItsType()
{
    QFETCH(int, type);
    QFETCH(QVariant, payload);
    QFETCH(QVariantMap, payloadKeys);
    QSettings settings(path(), QSettings::IniFormat);

    const int status = Request(QStringLiteral("FI"), type, payload, Url, 3).serialize(settings);

    QVariantMap expected = payloadKeys;
    expected[QStringLiteral("id")] = QStringLiteral("FI");
    expected[QStringLiteral("type")] = type;
    expected[QStringLiteral("state")] = 3;
    expected[QStringLiteral("url")] = Url;
    QVariantMap written;
    const QStringList keys = settings.allKeys();
    for (const QString &key : keys)
        written[key] = settings.value(key);
    QCOMPARE(written, expected);
    QCOMPARE(status, 0);
}

void RequestTest::convertsAPayloadOfAnotherKind_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("payload");
    QTest::addColumn<QVariant>("readBack");

    QTest::newRow("a number where a name belongs")
        << 2 << QVariant(42) << QVariant(QStringLiteral("42"));
    QTest::newRow("a map where a name belongs")
        << 2 << QVariant(QVariantMap()) << QVariant(QString());
    QTest::newRow("nothing where a name belongs") << 1 << QVariant() << QVariant(QString());
    QTest::newRow("two paths where an archive belongs")
        << 3 << QVariant(list("/a", "/b")) << QVariant(QString());
    QTest::newRow("a number where an archive belongs")
        << 3 << QVariant(7) << QVariant(QStringLiteral("7"));
    QTest::newRow("one path where two belong")
        << 4 << QVariant(QStringLiteral("/a")) << QVariant(list("/a", ""));
    QTest::newRow("three paths where two belong")
        << 4 << QVariant(list("/a", "/b") << QStringLiteral("/c")) << QVariant(list("/a", "/b"));
    QTest::newRow("nothing where two paths belong") << 4 << QVariant() << QVariant(list("", ""));
}

void RequestTest::convertsAPayloadOfAnotherKind()
{
    QFETCH(int, type);
    QFETCH(QVariant, payload);
    QFETCH(QVariant, readBack);
    {
        QSettings settings(path(), QSettings::IniFormat);
        Request(QStringLiteral("FI"), type, payload, Url).serialize(settings);
    }

    const Request request = readFromDisk();

    QCOMPARE(request.payload.toStringList(), readBack.toStringList());
    QCOMPARE(request.payload.userType(), readBack.userType());
}

void RequestTest::comesBackFromTheDiskAsItWas_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("payload");
    QTest::addColumn<QString>("url");
    QTest::addColumn<int>("state");
    const QString id = QStringLiteral("FI");
    const QString file = QStringLiteral("/home/u/FI.zip");

    QTest::newRow("test download with its empty id")
        << QString() << 1 << QVariant(file) << Url << 0;
    QTest::newRow("download") << id << 2 << QVariant(file) << Url << 0;
    QTest::newRow("uncompress") << id << 3 << QVariant(file) << Url << 0;
    QTest::newRow("move, in the order source, destination")
        << id << 4 << QVariant(list("/z source", "/a destination")) << Url << 0;
    QTest::newRow("move to paths with commas and semicolons")
        << id << 4 << QVariant(list("/a,b;c", "@/\"d\" \\e%20=[f]")) << Url << 0;
    QTest::newRow("blanks at both ends")
        << QStringLiteral(" x ") << 2 << QVariant(QStringLiteral(" /a ")) << Url << 0;
    QTest::newRow("a line feed in the id")
        << QStringLiteral("a\nb\t") << 2 << QVariant(file) << Url << 0;
    QTest::newRow("letters outside Latin-1")
        << QString::fromUtf8("Öland €") << 2 << QVariant(QString::fromUtf8("/Ålesund €.zip"))
        << QString::fromUtf8("http://h/Å") << 0;
    QTest::newRow("done") << id << 2 << QVariant(file) << Url << 2;
    QTest::newRow("failed") << id << 2 << QVariant(file) << Url << 3;
    QTest::newRow("aborted") << id << 2 << QVariant(file) << Url << 4;
    QTest::newRow("no address") << id << 2 << QVariant(file) << QString() << 0;
}

void RequestTest::comesBackFromTheDiskAsItWas()
{
    QFETCH(QString, id);
    QFETCH(int, type);
    QFETCH(QVariant, payload);
    QFETCH(QString, url);
    QFETCH(int, state);
    {
        QSettings settings(path(), QSettings::IniFormat);
        VexaCompat::useUtf8(settings);
        Request(id, type, payload, url, state).serialize(settings);
    }

    const Request request = readFromDisk();

    QCOMPARE(request.id, id);
    QCOMPARE(request.type, type);
    QCOMPARE(request.payload, payload);
    QCOMPARE(request.url, url);
    QCOMPARE(request.state, state);
}

void RequestTest::unknownTypeLeavesThePayloadAlone_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("0") << 0;
    QTest::newRow("-1") << -1;
    QTest::newRow("5") << 5;
}

void RequestTest::unknownTypeLeavesThePayloadAlone()
{
    QFETCH(int, type);
    QSettings settings(path(), QSettings::IniFormat);
    Request(QStringLiteral("FI"), type, QStringLiteral("lost"), Url, 3).serialize(settings);
    Request request(QStringLiteral("SE"), 2, QStringLiteral("kept"), QStringLiteral("u"));

    const int status = request.deSerialize(settings);

    QCOMPARE(request.payload, QVariant(QStringLiteral("kept")));
    QCOMPARE(request.id, QStringLiteral("FI"));
    QCOMPARE(request.type, type);
    QCOMPARE(request.url, Url);
    QCOMPARE(request.state, 3);
    QCOMPARE(status, 0);
}

void RequestTest::missingKeysReadAsEmptyOrZero_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("payload");
    QTest::newRow("all of them") << 0 << QVariant(QStringLiteral("kept"));
    QTest::newRow("of a test download") << 1 << QVariant(QString());
    QTest::newRow("of a download") << 2 << QVariant(QString());
    QTest::newRow("of an uncompress") << 3 << QVariant(QString());
    QTest::newRow("of a move") << 4 << QVariant(list("", ""));
}

void RequestTest::missingKeysReadAsEmptyOrZero()
{
    QFETCH(int, type);
    QFETCH(QVariant, payload);
    QSettings settings(path(), QSettings::IniFormat);
    if (type != 0)
        settings.setValue(QStringLiteral("type"), type);
    Request request(QStringLiteral("SE"), 2, QStringLiteral("kept"), QStringLiteral("u"), 4);

    const int status = request.deSerialize(settings);

    QVERIFY(request.id.isEmpty());
    QCOMPARE(request.type, type);
    QCOMPARE(request.payload, payload);
    QVERIFY(request.url.isEmpty());
    QCOMPARE(request.state, 0);
    QCOMPARE(status, 0);
}

void RequestTest::valuesOfTheWrongKindAreConverted()
{
    QFile file(path());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[General]\nid=17\ntype=2\nstate=much\nurl=http://h/a,b\nfilename=/a.zip\n");
    file.close();

    Request request = readFromDisk();

    QCOMPARE(request.id, QStringLiteral("17"));
    QCOMPARE(request.state, 0);
    QVERIFY(request.url.isEmpty()); // the comma made it a list
    QCOMPARE(request.payload, QVariant(QStringLiteral("/a.zip")));

    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("[General]\nid=FI\ntype=two\nfilename=/a.zip\n");
    file.close();

    request = readFromDisk();

    QCOMPARE(request.type, 0);
    QVERIFY(!request.payload.isValid());
}

void RequestTest::readingReplacesWhatWasThere()
{
    QSettings settings(path(), QSettings::IniFormat);
    Request(QStringLiteral("FI"), 3, QStringLiteral("/a.zip"), Url).serialize(settings);
    Request request(QStringLiteral("SE"), 4, list("/x", "/y"), QStringLiteral("u"), 4);

    request.deSerialize(settings);

    QCOMPARE(request, Request(QStringLiteral("FI"), 3, QStringLiteral("/a.zip"), Url));
    QCOMPARE(request.state, 0);
}

void RequestTest::writesAtThePositionThatTheCallerChose()
{
    QSettings settings(path(), QSettings::IniFormat);
    settings.beginWriteArray(QStringLiteral("requests"));
    for (int i = 0; i < 2; ++i) {
        settings.setArrayIndex(i);
        Request(QString::number(i), 2, QStringLiteral("/a"), Url).serialize(settings);
    }
    settings.endArray();

    QCOMPARE(settings.value(QStringLiteral("requests/1/id")).toString(), QStringLiteral("0"));
    QCOMPARE(settings.value(QStringLiteral("requests/2/id")).toString(), QStringLiteral("1"));
    QCOMPARE(settings.value(QStringLiteral("requests/2/filename")).toString(),
             QStringLiteral("/a"));
    settings.beginGroup(QStringLiteral("requests/2"));
    Request request;
    request.deSerialize(settings);
    QCOMPARE(request.id, QStringLiteral("1"));
}

void RequestTest::twoRequestsAreEqualWhateverTheirState()
{
    const Request one(QStringLiteral("FI"), 2, QStringLiteral("/a"), Url, 0);

    QVERIFY(one == Request(QStringLiteral("FI"), 2, QStringLiteral("/a"), Url, 3));
    QVERIFY(!(one == Request(QStringLiteral("SE"), 2, QStringLiteral("/a"), Url)));
    QVERIFY(!(one == Request(QStringLiteral("FI"), 3, QStringLiteral("/a"), Url)));
    QVERIFY(!(one == Request(QStringLiteral("FI"), 2, QStringLiteral("/b"), Url)));
    QVERIFY(!(one == Request(QStringLiteral("FI"), 2, QStringLiteral("/a"), QStringLiteral("u"))));
}

void RequestTest::isAValueThatCanBeCopied()
{
    Request one(QStringLiteral("FI"), 4, list("/x", "/y"), Url, 2);
    const Request copy = one;

    one.id = QStringLiteral("SE");
    one.payload = 1;
    one.state = 3;

    QCOMPARE(copy, Request(QStringLiteral("FI"), 4, list("/x", "/y"), Url));
    QCOMPARE(copy.state, 2);
}

QTEST_GUILESS_MAIN(RequestTest)
#include "tst_request.moc"
