// SPDX-License-Identifier: MIT
// What QML and hosts find in the interface's meta-object: names and order are relied on.
#include "download/downloadmanageriface.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QtTest>

namespace {

QStringList strings(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts)
        list.append(QString::fromUtf8(text));
    return list;
}

// "finished(int operation, QString url)", with names as declared and types as the meta-object
// knows them: a qint64 is a qlonglong there.
QString described(const QMetaMethod &method)
{
    QStringList parameters;
    const QList<QByteArray> types = method.parameterTypes();
    const QList<QByteArray> names = method.parameterNames();
    for (int i = 0; i < types.size(); ++i)
        parameters.append(QString::fromLatin1(types.at(i) + ' ' + names.at(i)));
    return QString::fromLatin1(method.name()) + QLatin1Char('(')
        + parameters.join(QLatin1String(", ")) + QLatin1Char(')');
}

QStringList methodsOf(const QMetaObject &meta, QMetaMethod::MethodType type)
{
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == type)
            methods.append(described(meta.method(i)));
    }
    return methods;
}

} // namespace

class DownloadManagerIfaceMetaTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void signalsHaveTheirOrderAndNames();
    void slotsHaveTheirOrderAndNames();
    void invokablesHaveTheirOrderAndNames();
    void propertiesHaveTheirOrderAndSignals();
};

void DownloadManagerIfaceMetaTest::signalsHaveTheirOrderAndNames()
{
    QCOMPARE(methodsOf(DownloadManagerIface::staticMetaObject, QMetaMethod::Signal),
             strings({"finished(int operation, QString url, QString id)",
                      "progress(int operation, QString url, QString id, qlonglong bytesReceived, "
                      "qlonglong bytesTotal, qlonglong estimatedTime)",
                      "error(int operation, QString id, int error, QString url)",
                      "recovery(bool isSuspended)", "requestsChanged()",
                      "hasWifiConnectionChanged()", "isSuspended(bool suspended)",
                      "unpackedFileListChanged()", "isSuspendedChanged()"}));
}

void DownloadManagerIfaceMetaTest::slotsHaveTheirOrderAndNames()
{
    // id and url stand the other way round than in the signals, and that is meant.
    QCOMPARE(
        methodsOf(DownloadManagerIface::staticMetaObject, QMetaMethod::Slot),
        strings({"onFinished(int operation, QString id, QString url)",
                 "onProgress(int operation, QString id, QString url, qlonglong bytesReceived, "
                 "qlonglong bytesTotal, qlonglong estimatedTime)",
                 "onError(int operation, QString id, int error, QString url)",
                 "onRecovery(bool isSuspended)", "onWifiConnectionChanged(bool hasWifiConnection)",
                 "onSessionStateChanged(int state)", "onNotifySuspended(bool suspended)",
                 "onNotifySuspended()", "prepareToDestroy()"}));
}

void DownloadManagerIfaceMetaTest::invokablesHaveTheirOrderAndNames()
{
    const QMetaObject &meta = DownloadManagerIface::staticMetaObject;
    QCOMPARE(methodsOf(meta, QMetaMethod::Method),
             strings({"testDownload(QString url)",
                      "download(QString id, QString url, QString destDir, bool unzip)", "suspend()",
                      "resume()", "cancel(QString url)", "cancel()", "cancelAll()",
                      "allowGprsConnection(bool allow)", "getRequests()", "isInQueue(QString id)",
                      "currentlyActiveId()", "allowGoOnline(bool allow)"}));
    const auto result = [](const char *signature) {
        return QByteArray(meta.method(meta.indexOfMethod(signature)).typeName());
    };
    QCOMPARE(result("getRequests()"), QByteArray("QVariantList"));
    QCOMPARE(result("isInQueue(QString)"), QByteArray("bool"));
    QCOMPARE(result("currentlyActiveId()"), QByteArray("QString"));
    QVERIFY(meta.method(meta.indexOfMethod("cancel()")).attributes() & QMetaMethod::Cloned);
    QVERIFY(meta.method(meta.indexOfMethod("onNotifySuspended()")).attributes()
            & QMetaMethod::Cloned);
}

void DownloadManagerIfaceMetaTest::propertiesHaveTheirOrderAndSignals()
{
    const QMetaObject &meta = DownloadManagerIface::staticMetaObject;
    QStringList properties;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        properties.append(QStringLiteral("%1 %2 %3")
                              .arg(QLatin1String(property.typeName()),
                                   QLatin1String(property.name()),
                                   QString::fromLatin1(property.notifySignal().methodSignature())));
        QVERIFY(property.isReadable());
        QVERIFY(!property.isWritable());
    }

    QCOMPARE(
        properties,
        strings({"qulonglong freeDiskSpace ", "bool inRecovery ",
                 "bool isSuspended isSuspendedChanged()", "QVariantList requests requestsChanged()",
                 "bool hasWifiConnection hasWifiConnectionChanged()",
                 "QStringList unpackedFileList unpackedFileListChanged()"}));
}

QTEST_GUILESS_MAIN(DownloadManagerIfaceMetaTest)
#include "tst_downloadmanagerifacemeta.moc"
