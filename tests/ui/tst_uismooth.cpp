// SPDX-License-Identifier: MIT
// Thousands of maps: the window draws, is typed into and scrolled while the app is at work.
#include "host/ui/demodata.h"
#include "testutils/archivebuilder.h"
#include "uirig.h"
#include <functional>
#include <QRegularExpression>
#include <QSet>
#include <QTimer>
#include <utility>

class UiSmoothTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSearchIsTypedIntoWhileTheCatalogueLoads();
    void theListIsScrolledWhileTheCatalogueLoads();
    void theSearchIsTypedIntoWhileARegionIsUnpacked();
    void theListIsScrolledWhileARegionIsUnpacked();
    void theKeyboardLeadsToBothEndsOfALongList();
    void aScrolledListStaysWhereItIsWhenTheCatalogueHasChanged();
};

namespace {

constexpr int ExtraRegions = 5000;
constexpr int LoadedRegions = 12000; // so many that a load lasts longer than a dozen frames
constexpr int Enough = 5; // actions of the user, each seen on the screen before the next
const QString Region = QStringLiteral("SE");

/**
 * A user who acts again as soon as the last action can be seen, and only while the app is at work:
 * what is blocked meanwhile is not done at all.
 */
class User : public QObject
{
public:
    User(UiRig *rig, std::function<bool()> isAtWork, std::function<bool()> isSeen,
         std::function<void(int)> act)
        : m_isAtWork(std::move(isAtWork))
        , m_isSeen(std::move(isSeen))
        , m_act(std::move(act))
    {
        connect(rig->window, &QQuickWindow::frameSwapped, this, [this] { ++m_frames; });
        connect(&m_turns, &QTimer::timeout, this, &User::onTurn);
        m_turns.start(0);
    }

    /** How often they have acted and seen what came of it. */
    int actions() const { return m_seen; }

private:
    void onTurn()
    {
        // A key press runs the event loop.
        if (m_acting || !m_isAtWork())
            return;
        if (m_acted > m_seen) {
            if (m_frames == m_framesBefore || !m_isSeen())
                return;
            ++m_seen;
        }
        m_framesBefore = m_frames;
        m_acting = true;
        m_act(m_acted++);
        m_acting = false;
    }

    const std::function<bool()> m_isAtWork;
    const std::function<bool()> m_isSeen;
    const std::function<void(int)> m_act;
    QTimer m_turns;
    int m_frames = 0;
    int m_framesBefore = 0;
    int m_acted = 0;
    int m_seen = 0;
    bool m_acting = false;
};

struct LongRig : UiRig
{
    bool openMany(int regions = ExtraRegions)
    {
        return DemoData::create(regions) && open() && waitForRows();
    }

    bool waitForRows()
    {
        return QTest::qWaitFor([this] { return !session->regions()->loading(); }, Long)
            && waitFor("Japan");
    }

    /** With an archive of so many files that it takes a while. */
    bool openManyAndInstall()
    {
        Tiles tiles;
        for (int i = 0; i < 1500; ++i)
            tiles.insert(QStringLiteral("0/%1/%2.cdt").arg(i % 16).arg(i),
                         TestContent::tile(QString::number(i), 50));
        content.addRegion(Region, QStringLiteral("Sweden"), tiles);
        return DemoData::create(ExtraRegions) && tellTrueSize() && open() && waitForRows()
            && installer().install(Region);
    }

    /** The demo's catalogue gives sizes of real maps; an archive of another one is refused. */
    bool tellTrueSize()
    {
        const QDir folder(DataRoot::catalogFolder());
        const QString path =
            folder.filePath(folder.entryList({QStringLiteral("catalog-*.xml")}).value(0));
        QString xml = QString::fromUtf8(TestFile::read(path));
        const qint64 size = QFileInfo(content.archivePath(Region)).size();
        const QRegularExpression told(
            QStringLiteral("(Id=\"%1\"[^>]* ZipFileSize=)\"\\d+\"").arg(Region));
        const QString before = xml;
        xml.replace(told, QStringLiteral("\\1\"%1\"").arg(size));
        TestFile::write(path, xml.toUtf8());
        return size > 0 && xml != before;
    }

    bool isUnpacking()
    {
        return installer().sentence(Region).startsWith(QLatin1String("Unpacking"));
    }

    /** The list of the top level. */
    QQuickItem *list()
    {
        const QList<QQuickItem *> items = PageInspector::shownItems(window->contentItem());
        for (QQuickItem *item : items) {
            if (item->inherits("QQuickListView"))
                return item;
        }
        return nullptr;
    }

    /** Name and place of the topmost row; Qt 5 may set it a few pixels off. */
    QPair<QString, qreal> firstInSight()
    {
        window->grabWindow();
        QString name;
        qreal top = window->height();
        const QList<QQuickItem *> items = PageInspector::shownItems(window->contentItem());
        for (const QQuickItem *item : items) {
            const qreal y = item->mapToScene(QPointF()).y();
            if (!item->inherits("QQuickItemDelegate") || y >= top)
                continue;
            name = item->property("text").toString();
            top = y;
        }
        return {name, top};
    }
};

/** A load under way, and at how many different points of it the user has acted. */
class Load
{
public:
    explicit Load(MapCatalog *catalog)
        : m_catalog(catalog)
        , m_regions(catalog->availableRegions()) // a view of the catalogue's own list
    { }

    bool isUnderWay() const { return m_catalog->bussy(); }
    void note() { m_points.insert(m_regions.count(&m_regions)); }
    int points() const { return int(m_points.size()); }

private:
    MapCatalog *const m_catalog;
    QQmlListProperty<MapRegion> m_regions;
    QSet<qsizetype> m_points;
};

/** Types a name and takes it back, letter by letter, again and again. */
class Typist
{
public:
    explicit Typist(UiRig *rig)
        : m_rig(rig)
        , m_search(PageInspector::find(rig->window, QStringLiteral("search")))
        , m_results(rig->window->findChild<QQuickItem *>(QStringLiteral("results")))
    {
        rig->key(Qt::Key_F, Qt::ControlModifier);
        m_search->setProperty("patience", 0); // Each letter is looked for at once.
    }

    void act(int number)
    {
        static const QString name = QStringLiteral("region 12");
        const int step = number % int(2 * name.size());
        if (step < name.size())
            m_rig->type(name.mid(step, 1));
        else
            m_rig->key(Qt::Key_Backspace);
    }

    bool isSeen()
    {
        const QString words = m_search->property("text").toString().trimmed();
        if (m_results->property("search").toString() != words)
            return false;
        m_counts.insert(m_results->property("shown").toInt());
        return true;
    }

    /** How many lists of results were seen that differ in length. */
    int lists() const { return int(m_counts.size()); }

private:
    UiRig *const m_rig;
    QQuickItem *const m_search;
    QQuickItem *const m_results;
    QSet<int> m_counts;
};

/** Goes three pages down and one up, again and again. */
class Reader
{
public:
    explicit Reader(LongRig *rig)
        : m_rig(rig)
        , m_list(rig->list())
    {
        m_list->forceActiveFocus();
    }

    void act(int number)
    {
        m_placeBefore = place();
        m_rig->key(number % 4 == 3 ? Qt::Key_PageUp : Qt::Key_PageDown);
    }

    bool isSeen() const { return place() != m_placeBefore; }
    qreal place() const { return m_list->property("contentY").toReal(); }

private:
    UiRig *const m_rig;
    QQuickItem *const m_list;
    qreal m_placeBefore = 0;
};

} // namespace

void UiSmoothTest::theSearchIsTypedIntoWhileTheCatalogueLoads()
{
    LongRig rig;
    QVERIFY(rig.openMany(LoadedRegions));
    Load load(rig.session->catalog());
    Typist typist(&rig);
    const User user(
        &rig, [&load] { return load.isUnderWay(); }, [&typist] { return typist.isSeen(); },
        [&](int number) {
            load.note();
            typist.act(number);
        });

    rig.session->catalog()->updateCatalog();

    QVERIFY2(user.actions() >= Enough, qPrintable(QString::number(user.actions())));
    QVERIFY2(load.points() >= Enough, qPrintable(QString::number(load.points())));
    QVERIFY(typist.lists() >= 3);
}

void UiSmoothTest::theListIsScrolledWhileTheCatalogueLoads()
{
    LongRig rig;
    QVERIFY(rig.openMany(LoadedRegions));
    Load load(rig.session->catalog());
    Reader reader(&rig);
    const User user(
        &rig, [&load] { return load.isUnderWay(); }, [&reader] { return reader.isSeen(); },
        [&](int number) {
            load.note();
            reader.act(number);
        });

    rig.session->catalog()->updateCatalog();

    QVERIFY2(user.actions() >= Enough, qPrintable(QString::number(user.actions())));
    QVERIFY2(load.points() >= Enough, qPrintable(QString::number(load.points())));
}

void UiSmoothTest::theSearchIsTypedIntoWhileARegionIsUnpacked()
{
    LongRig rig;
    QVERIFY(rig.openManyAndInstall());
    Typist typist(&rig);
    const User user(
        &rig, [&rig] { return rig.isUnpacking(); }, [&typist] { return typist.isSeen(); },
        [&typist](int number) { typist.act(number); });

    QTRY_VERIFY_WITH_TIMEOUT(!rig.installer().busy(), UiRig::Long);

    QVERIFY(rig.session->catalog()->region(Region)->installed());
    QVERIFY2(user.actions() >= Enough, qPrintable(QString::number(user.actions())));
    QVERIFY(typist.lists() >= 3);
}

void UiSmoothTest::theListIsScrolledWhileARegionIsUnpacked()
{
    LongRig rig;
    QVERIFY(rig.openManyAndInstall());
    Reader reader(&rig);
    const User user(
        &rig, [&rig] { return rig.isUnpacking(); }, [&reader] { return reader.isSeen(); },
        [&reader](int number) { reader.act(number); });

    QTRY_VERIFY_WITH_TIMEOUT(!rig.installer().busy(), UiRig::Long);

    QVERIFY(rig.session->catalog()->region(Region)->installed());
    QVERIFY2(user.actions() >= Enough, qPrintable(QString::number(user.actions())));
}

void UiSmoothTest::theKeyboardLeadsToBothEndsOfALongList()
{
    LongRig rig;
    QVERIFY(rig.openMany());
    const Reader reader(&rig);
    const auto isAtEnd = [&rig] { return rig.list()->property("atYEnd").toBool(); };
    const auto current = [&rig] { return rig.list()->property("currentIndex").toInt(); };
    QTRY_VERIFY(rig.list()->property("shown").toInt() > ExtraRegions);
    const int last = rig.list()->property("shown").toInt() - 1;

    rig.key(Qt::Key_End);
    QTRY_VERIFY(isAtEnd());
    QCOMPARE(current(), last);
    rig.key(Qt::Key_PageDown); // no further
    QCOMPARE(current(), last);
    rig.key(Qt::Key_PageUp);
    QVERIFY(current() < last - 1);
    rig.key(Qt::Key_PageUp);
    QTRY_VERIFY(!isAtEnd());
    rig.key(Qt::Key_Home);

    QCOMPARE(current(), 0);
    QCOMPARE(reader.place(), 0.0);
}

// The same rows stay in sight although others have come above them.
void UiSmoothTest::aScrolledListStaysWhereItIsWhenTheCatalogueHasChanged()
{
    LongRig rig;
    QVERIFY(rig.openMany());
    Reader reader(&rig);
    for (int i = 0; i < 20; ++i)
        rig.key(Qt::Key_PageDown);
    const auto before = rig.firstInSight();
    QTRY_VERIFY(rig.list()->property("shown").toInt() > ExtraRegions);
    const int rows = rig.list()->property("shown").toInt();
    QVERIFY(before.first.startsWith(QLatin1String("Region ")));

    const QString path =
        QDir(rig.session->catalog()->tessarinDirectory())
            .filePath(QStringLiteral("catalog-%1.xml").arg(QLatin1String(DemoData::Version)));
    QByteArray catalog = TestFile::read(path);
    QByteArray more;
    for (int i = 0; i < 50; ++i)
        more += "<File Id=\"A" + QByteArray::number(i) + "\" Description=\"Aa "
            + QByteArray::number(i) + "\" ZipFileSize=\"1\" Link=\"a.zip\"/>";
    TestFile::write(path, catalog.replace("<File Id=\"JP\"", more + "<File Id=\"JP\""));
    rig.session->catalog()->updateCatalog();
    QTRY_COMPARE_WITH_TIMEOUT(rig.list()->property("shown").toInt(), rows + 50, UiRig::Long);

    const auto after = rig.firstInSight();
    QCOMPARE(after.first, before.first);
    QVERIFY2(qAbs(after.second - before.second) < 10, qPrintable(QString::number(after.second)));
}

UI_TEST_MAIN(UiSmoothTest)
#include "tst_uismooth.moc"
