// SPDX-License-Identifier: MIT
// Each snippet of doc/qml-host.md prints what stands below it there.
#include "doc/snippets.h"
#include "host/shared/hosttypes.h"
#include "host/shared/networkbinding.h"
#include "host/shared/networksource.h"
#include "host/shared/networkstate.h"
#include "host/shared/regionfiltermodel.h"
#include "host/shared/removalpreview.h"
#include "installerrig.h"
#include "plugin/logger.h"
#include "testutils/archivebuilder.h"
#include <QQmlContext>
#include <QQmlEngine>

namespace {

class HomeNetwork : public NetworkSource
{
public:
    NetworkReport report() const override { return {NetworkReport::Standing::Told, true, true}; }
};

/** The device and the host that the page speaks of. */
class Device : public InstallerRig
{
public:
    Device()
    {
        const QByteArray tile(100, 't');
        content.addRegion(QStringLiteral("FI"), QStringLiteral("Finland"),
                          {{QStringLiteral("a/3/f.cdt"), tile}});
        content.addRegion(
            QStringLiteral("SE"), QStringLiteral("Sweden"),
            {{QStringLiteral("b/4/s.cdt"), tile}, {QStringLiteral("b/5/s.cdt"), tile}});
        openSession(false);
        TestFile::write(DataRoot::catalogFolder() + QLatin1String("/regionname-lang-001.xml"),
                        "<regions><region id=\"FI\" name=\"Suomi\"/>"
                        "<region id=\"SE\" name=\"Sverige\"/></regions>\n");
        catalog().updateCatalog();
        network = std::make_unique<NetworkState>(std::make_unique<HomeNetwork>());
        binding = std::make_unique<NetworkBinding>(network.get(), &installer());
        regions = std::make_unique<RegionModel>(&catalog(), &installer());
        session->start();
        installer().install(QStringLiteral("SE"));

        QQmlContext *context = engine.rootContext();
        context->setContextProperty(QStringLiteral("installer"), &installer());
        context->setContextProperty(QStringLiteral("regionModel"), regions.get());
        context->setContextProperty(QStringLiteral("network"), network.get());
    }

    /** Whether nothing is under way; the page begins then. */
    bool isReady()
    {
        return !installer().busy() && !regions->loading()
            && regions->get(QStringLiteral("SE")).value(QStringLiteral("sizeOnDisk")) == 200;
    }

    std::unique_ptr<NetworkState> network;
    std::unique_ptr<NetworkBinding> binding;
    std::unique_ptr<RegionModel> regions;
    QQmlEngine engine;
};

} // namespace

class QmlHostSnippetsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { registerHostTypes("VexaHost"); }
    void snippetPrintsWhatThePageSays_data() { addSnippets(QStringLiteral("qml-host.md")); }
    void snippetPrintsWhatThePageSays();
    void everyPropertyAndRoleIsOnThePage();
};

void QmlHostSnippetsTest::snippetPrintsWhatThePageSays()
{
    QFETCH(QString, snippet);
    QFETCH(QString, output);
    Device device;
    QTRY_VERIFY_WITH_TIMEOUT(device.isReady(), 30000);
    const LogCatcher log(L::Off);

    const auto page = makePage(&device.engine, snippet);

    QTRY_COMPARE_WITH_TIMEOUT(printed(log), output, 30000);
    QTRY_VERIFY(!device.installer().busy());
    QCOMPARE(printed(log), output); // and nothing more
}

void QmlHostSnippetsTest::everyPropertyAndRoleIsOnThePage()
{
    const QByteArray page = TestFile::read(QStringLiteral(VEXA_DOC_DIR "/qml-host.md"));
    for (const QMetaObject *type :
         {&RegionInstaller::staticMetaObject, &RegionModel::staticMetaObject,
          &RegionFilterModel::staticMetaObject, &RemovalPreview::staticMetaObject,
          &NetworkState::staticMetaObject}) {
        QVERIFY(type->propertyCount() > type->propertyOffset());
        for (int i = type->propertyOffset(); i < type->propertyCount(); ++i) {
            const QByteArray name = type->property(i).name();
            const bool isThere = page.contains('`' + name + '`')
                || page.contains('`' + QByteArray(type->className()) + '.' + name + '`');
            QVERIFY2(isThere, type->className() + ("." + name));
        }
    }
    const RegionModel model(nullptr, nullptr);
    const QHash<int, QByteArray> roles = model.roleNames();
    QVERIFY(roles.size() > 20);
    for (const QByteArray &role : roles)
        QVERIFY2(page.contains('`' + role + '`'), role.constData());
}

QTEST_GUILESS_MAIN(QmlHostSnippetsTest)
#include "tst_qmlhostsnippets.moc"
