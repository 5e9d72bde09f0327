// SPDX-License-Identifier: MIT
#include "archive/unpacking.h"
#include "testutils/archivebuilder.h"
#include <cstdio>
#include <cstring>
#include <langinfo.h>
#include <QProcess>
#include <QtTest>

namespace {

// Latin, Greek, Cyrillic, Japanese, and one beyond the first 65536.
const char MixedName[] = "é/Ελλάδα/Санкт 東京/🗺.cdt";

/** What the program does as a child: "--unpack archive folder" writes the list, then the result. */
int unpackAsChild(const char *archivePath, const char *folder)
{
    VexaArchive archive(QString::fromUtf8(archivePath));
    archive.setBlockPause(0);
    archive.unpack(QString::fromUtf8(folder));
    const QStringList list = archive.getUnpackedFileList();
    for (const QString &name : list)
        std::printf("%s\n", name.toUtf8().constData());
    std::printf("%d %s\n", archive.error(), archive.errorString().toUtf8().constData());
    return 0;
}

} // namespace

class ArchiveNamesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void namesAreUtf8InEveryLocale_data();
    void namesAreUtf8InEveryLocale();
    void localeOfTheSlotsIsTheProgramsOwn();
    void nameThatIsNotUtf8IsTakenForLatin1();
    void byteOrderMarkInANameIsKept();
    void longNamesAreUnpacked();
    void nameThatTheLibraryCannotConvertIsAnIterationError();
    void namesThatQtWouldReadOtherwiseAreJustNames();
    void archiveAndDestinationMayHaveAnyUtf8Path();
    void filesAreForTheUserAlone();

private:
    std::unique_ptr<ArchiveBuilder> m_builder;
};

void ArchiveNamesTest::init()
{
    m_builder = std::make_unique<ArchiveBuilder>();
}

void ArchiveNamesTest::namesAreUtf8InEveryLocale_data()
{
    QTest::addColumn<QByteArray>("locale");
    QTest::addColumn<QString>("format");
    for (const char *locale : {"C", "POSIX", "C.UTF-8", "xx_XX.none"}) {
        for (const char *format : {"a.pax", "a.tar", "a.zip", "a.7z", "a.iso"})
            QTest::addRow("%s in %s", format, locale)
                << QByteArray(locale) << QString::fromLatin1(format);
    }
}

void ArchiveNamesTest::namesAreUtf8InEveryLocale()
{
    QFETCH(QByteArray, locale);
    QFETCH(QString, format);
    const QString name = QString::fromUtf8(MixedName);
    m_builder->addFile(name, "data");
    const QString archive = m_builder->make(format);
    const QTemporaryDir folder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QString::fromLatin1(locale));
    QProcess child;
    child.setProcessEnvironment(environment);

    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--unpack"), archive, folder.filePath(QStringLiteral("ä"))});
    QVERIFY(child.waitForFinished(60000));

    QList<QByteArray> lines = child.readAllStandardOutput().split('\n');
    QCOMPARE(lines.takeLast(), QByteArray());
    QCOMPARE(lines.takeLast(), QByteArray("0 "));
    QVERIFY(lines.contains(MixedName));
    QCOMPARE(TestFile::read(folder.filePath(QStringLiteral("ä/")) + name), QByteArray("data"));
}

void ArchiveNamesTest::localeOfTheSlotsIsTheProgramsOwn()
{
    m_builder->addFile(QStringLiteral("ü"), "data");
    Unpacking unpacking(m_builder->make(QStringLiteral("a.pax")));
    const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    const locale_t before = uselocale(plain);
    QByteArray charset;
    locale_t inSlot = nullptr;
    connect(&unpacking.archive, &VexaArchive::progress, this, [&] {
        charset = nl_langinfo(CODESET);
        inSlot = uselocale(nullptr);
    });

    const bool unpacked = unpacking.run();
    const locale_t after = uselocale(before);
    freelocale(plain);

    QVERIFY(unpacked);
    QCOMPARE(charset, QByteArray("ANSI_X3.4-1968"));
    QVERIFY(inSlot == plain);
    QVERIFY(after == plain);
    QCOMPARE(unpacking.archive.getUnpackedFileList(), QStringList {QStringLiteral("ü")});
}

void ArchiveNamesTest::nameThatIsNotUtf8IsTakenForLatin1()
{
    // "Caf\xe9" is Latin-1; the second has an overlong slash, the third a surrogate in it.
    Unpacking unpacking(m_builder->write(QStringLiteral("a.tar"),
                                         RawTar()
                                             .add("Caf\xe9/\xdf", "1")
                                             .add("a\xc0\xaf"
                                                  "b",
                                                  "2")
                                             .add("\xed\xa0\x80", "3")
                                             .add("\xff\xfe", "4")
                                             .bytes()));

    QVERIFY2(unpacking.run(), qPrintable(unpacking.archive.errorString()));

    const QStringList names {QStringLiteral("Café/ß"),
                             QString::fromLatin1("a\xc0\xaf"
                                                 "b"),
                             QString::fromLatin1("\xed\xa0\x80"), QStringLiteral("ÿþ")};
    QCOMPARE(unpacking.archive.getUnpackedFileList(), names);
    for (int i = 0; i < names.size(); ++i)
        QCOMPARE(TestFile::read(unpacking.path(names.at(i))), QByteArray::number(i + 1));
}

void ArchiveNamesTest::byteOrderMarkInANameIsKept()
{
    Unpacking unpacking(m_builder->write(QStringLiteral("a.tar"),
                                         RawTar()
                                             .add("\xef\xbb\xbf"
                                                  "f",
                                                  "data")
                                             .bytes()));

    QVERIFY(unpacking.run());

    QCOMPARE(unpacking.archive.getUnpackedFileList(),
             QStringList {QChar(0xfeff) + QStringLiteral("f")});
}

void ArchiveNamesTest::longNamesAreUnpacked()
{
    const QString name = QString(80, QChar(0x6771)); // 240 bytes
    m_builder->addFile(name, "data");
    Unpacking unpacking(m_builder->make(QStringLiteral("a.pax")));

    QVERIFY(unpacking.run());

    QCOMPARE(unpacking.found(), QStringList {name});
}

void ArchiveNamesTest::nameThatTheLibraryCannotConvertIsAnIterationError()
{
    // A lone surrogate in a 7z name, which is UTF-16 there.
    const QString path =
        m_builder->write(QStringLiteral("a.7z"),
                         QByteArray::fromBase64("N3q8ryccAASZhAFjBgAAAAAAAABaAAAAAAAAAGmNUSwBAAF4Cg"
                                                "ABBAYAAQkGAAcLAQABISEBAAwCAAgKAR8I6kYA"
                                                "AAUBGQwAAAAAAAAAAAAAAAAREQAA2FEAUQAuAHQAeAB0AAAAGQ"
                                                "IAABQKAQCJggkrqnndARUGAQAggKSBAAA="));
    Unpacking unpacking(path);

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {2});
    QVERIFY(unpacking.archive.errorString().contains(QLatin1String("Pathname")));
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveNamesTest::namesThatQtWouldReadOtherwiseAreJustNames()
{
    QDir::setSearchPaths(QStringLiteral("maps"), {QDir::tempPath()});
    Unpacking unpacking(m_builder->write(QStringLiteral("a.tar"),
                                         RawTar()
                                             .add(":/qrc", "1")
                                             .add("maps:tile", "2")
                                             .add("back\\slash", "3")
                                             .add("new\nline", "4")
                                             .add("*?[x]", "5")
                                             .add("%1", "6")
                                             .bytes()));

    QVERIFY2(unpacking.run(), qPrintable(unpacking.archive.errorString()));

    QCOMPARE(unpacking.archive.getUnpackedFileList().size(), 6);
    for (const QString &name : unpacking.archive.getUnpackedFileList())
        QVERIFY2(unpacking.found().contains(name), qPrintable(name));
}

void ArchiveNamesTest::archiveAndDestinationMayHaveAnyUtf8Path()
{
    const QTemporaryDir home;
    m_builder->addFile(QStringLiteral("f"), "data");
    const QString path = m_builder->make(QStringLiteral("карта 東.tar"));
    VexaArchive archive(path);

    QVERIFY(archive.unpack(home.filePath(QStringLiteral("Ω XXXXXX/é"))));

    QCOMPARE(TestFile::read(home.filePath(QStringLiteral("Ω XXXXXX/é/f"))), QByteArray("data"));
}

void ArchiveNamesTest::filesAreForTheUserAlone()
{
    Unpacking unpacking(
        m_builder->write(QStringLiteral("a.tar"), RawTar().add("f", "data").bytes()));

    QVERIFY(unpacking.run());

    const QFile::Permissions group = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup;
    const QFile::Permissions other = QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    QCOMPARE(QFileInfo(unpacking.path(QStringLiteral("f"))).permissions() & (group | other),
             QFile::Permissions());
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc == 4 && std::strcmp(argv[1], "--unpack") == 0)
        return unpackAsChild(argv[2], argv[3]);
    ArchiveNamesTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_archivenames.moc"
