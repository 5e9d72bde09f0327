// SPDX-License-Identifier: MIT
#include "killorders.h"

#include "testutils/archivebuilder.h"
#include <QFile>
#include <QMap>
#include <QRegularExpression>

namespace {

// Another run does not come by it. And of a file that has no name yet, a kill leaves nothing.
bool isRandom(const QByteArray &name)
{
    static const QRegularExpression form(QStringLiteral("[.-][A-Za-z]{6}(/|$)|\\(nameless\\)"));
    static const QRegularExpression fixed(QStringLiteral("\\.(XXXXXX|config|voices)$"));
    const QString text = QString::fromUtf8(name);
    return form.match(text).hasMatch() && !fixed.match(text).hasMatch();
}

} // namespace

KillOrders::KillOrders(const QString &folder)
    : m_state(folder + QLatin1String("/killcount"))
    , m_log(folder + QLatin1String("/killlog"))
{ }

void KillOrders::give(QProcessEnvironment *environment, const KillPoint &point) const
{
    TestFile::write(m_state, QByteArray(8, '\0'));
    QFile::remove(m_log);
    environment->insert(QStringLiteral("VEXA_KILL_STATE"), m_state);
    environment->insert(QStringLiteral("VEXA_KILL_NAME"), QString::fromUtf8(point.name));
    environment->insert(QStringLiteral("VEXA_KILL_AT"), QString::number(point.number));
    environment->insert(QStringLiteral("VEXA_KILL_LOG"), m_log);
}

void KillOrders::preload(QProcessEnvironment *environment, const QString &library)
{
    environment->insert(QStringLiteral("LD_PRELOAD"), library);
    // The address checker wants to be first; the library does not mind.
    environment->insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("verify_asan_link_order=0"));
}

void KillOrders::failInstead(QProcessEnvironment *environment, int errorNumber, bool lasting)
{
    environment->insert(QStringLiteral("VEXA_KILL_ERROR"), QString::number(errorNumber));
    if (lasting)
        environment->insert(QStringLiteral("VEXA_KILL_FROM"), QStringLiteral("1"));
}

void KillOrders::withSyncs(QProcessEnvironment *environment)
{
    environment->insert(QStringLiteral("VEXA_KILL_SYNCS"), QStringLiteral("1"));
}

QList<QByteArray> KillOrders::names() const
{
    QList<QByteArray> names = TestFile::read(m_log).split('\n');
    names.removeAll(QByteArray());
    return names;
}

QList<KillPoint> KillOrders::points() const
{
    QList<KillPoint> points;
    QMap<QByteArray, int> numbers;
    const QList<QByteArray> all = names();
    for (const QByteArray &name : all) {
        if (!isRandom(name))
            points.append({name, ++numbers[name]});
    }
    return points;
}
