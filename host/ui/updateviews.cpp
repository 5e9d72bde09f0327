// SPDX-License-Identifier: MIT
#include "host/ui/updateviews.h"

#include "host/ui/mapsupdate.h"
#include <QMetaProperty>

namespace {

using Values = QVariantMap;

const QString Old = QStringLiteral("26.11.21.00");
const QString New = QStringLiteral("26.12.01.00");
const QString Giving = QStringLiteral("giveUpDialog");
const QString Going = QStringLiteral("goBackDialog");
const QString Removal = QStringLiteral("removeBackupDialog");

Values state(const char *name)
{
    return {{QStringLiteral("state"), QLatin1String(name)},
            {QStringLiteral("fromVersion"), Old},
            {QStringLiteral("targetVersion"), New}};
}

Values operator+(Values a, const Values &b)
{
    for (auto value = b.begin(); value != b.end(); ++value)
        a.insert(value.key(), value.value());
    return a;
}

// In words as long as the real ones.
Values running()
{
    return {{QStringLiteral("running"), true},
            {QStringLiteral("canStop"), true},
            {QStringLiteral("prepared"), true},
            {QStringLiteral("blockade"),
             MapsUpdate::tr("All maps are being updated. No other map can be installed or removed "
                            "until that is done.")}};
}

Values underWay()
{
    return running()
        + Values {{QStringLiteral("region"),
                   QStringLiteral("South Georgia and the South Sandwich Islands")},
                  {QStringLiteral("fraction"), 0.42},
                  {QStringLiteral("bytesReceived"), 183e6},
                  {QStringLiteral("bytesTotal"), 441e6}};
}

Values unfinished()
{
    return {{QStringLiteral("prepared"), true},
            {QStringLiteral("blockade"),
             MapsUpdate::tr("An update of all maps is not finished. Go on with it, or give it up, "
                            "before you install or remove maps.")}};
}

Values backup()
{
    return {{QStringLiteral("backupVersion"), Old},
            {QStringLiteral("backupSize"), 538e6},
            {QStringLiteral("lostRegions"),
             QStringList {QStringLiteral("Saint Vincent and the Grenadines"),
                          QStringLiteral("Mecklenburg-Western Pomerania")}}};
}

} // namespace

QVector<UpdateView> UpdateViews::all()
{
    const Values lacks {
        {QStringLiteral("missingRegions"), backup().value(QStringLiteral("lostRegions"))}};
    const Values error {{QStringLiteral("errorString"),
                         QStringLiteral("The server has been silent for 30 s; giving up.")}};
    const Values whole {{QStringLiteral("prepared"), true}, {QStringLiteral("whole"), true}};
    const Values hindered {
        {QStringLiteral("hindrance"),
         MapsUpdate::tr("Let the transfers end, or cancel them, before you update all maps.")}};
    return {
        {QStringLiteral("idle"), {}, {}, {}, false},
        {QStringLiteral("newer"), {}, New, {}, true},
        {QStringLiteral("hindered"), hindered, New, {}, false},
        {QStringLiteral("checking"), state("checking") + running(), New, {}, false},
        {QStringLiteral("installing"), state("installing") + underWay(), New, {Giving}, true},
        {QStringLiteral("held"), state("held") + underWay(), New, {}, false},
        {QStringLiteral("prepared"), state("prepared") + unfinished(), New, {}, true},
        {QStringLiteral("failed"), state("failed") + unfinished() + error, New, {}, false},
        {QStringLiteral("missing"), state("failed") + unfinished() + lacks, New, {}, false},
        {QStringLiteral("done"), state("done") + backup(), {}, {Removal}, false},
        {QStringLiteral("up to date"), state("upToDate"), {}, {}, false},
        {QStringLiteral("backup"), backup(), {}, {Going}, true},
        {QStringLiteral("removing"),
         backup() + Values {{QStringLiteral("removing"), true}},
         {},
         {},
         true},
        {QStringLiteral("gone back"), state("prepared") + whole, {}, {Giving}, false},
    };
}

std::unique_ptr<QQmlPropertyMap> UpdateViews::values(const UpdateView &view)
{
    auto map = std::make_unique<QQmlPropertyMap>();
    const QMetaObject &type = MapsUpdate::staticMetaObject;
    for (int i = type.propertyOffset(); i < type.propertyCount(); ++i) {
        const QMetaProperty property = type.property(i);
        const QVariant nothing = property.userType() == QMetaType::QStringList
            ? QVariant(QStringList())
            : property.userType() == QMetaType::QString ? QVariant(QString())
            : property.userType() == QMetaType::Bool    ? QVariant(false)
                                                        : QVariant(-1.0);
        map->insert(QLatin1String(property.name()),
                    view.values.value(QLatin1String(property.name()), nothing));
    }
    return map;
}
