// SPDX-License-Identifier: MIT
#pragma once

#include "catalog/isocodes.h"
#include "catalog/mapcatalog.h"
#include "catalog/mapdata.h"
#include "host/shared/regionmodel.h"
#include <QByteArray>
#include <QList>
#include <QMap>
#include <QtTest>

/** A region of a catalogue that a test writes. */
struct WorldRegion
{
    QByteArray id;
    QByteArray name;
    QList<WorldRegion> children = {};
    QByteArray link = "region.zip";
    qint64 size = 1000;
};

/** A device whose catalogue a test writes and changes. */
class RegionWorld
{
public:
    /** Writes the files; the next load reads them. */
    void write() const
    {
        writeFile(data.catalogFile(), "<Catalog>\n" + elements(regions) + "</Catalog>\n");
        QByteArray names = "<regions>\n";
        for (auto name = localNames.cbegin(); name != localNames.cend(); ++name)
            names += "<region id=\"" + name.key() + "\" name=\"" + name.value() + "\"/>\n";
        writeFile(data.namesFile(), names + "</regions>\n");
        writeFile(data.contentFile(), contentXml(installed));
    }

    /** Writes the files and loads them; the catalogue is made at the first time. */
    MapCatalog &load()
    {
        write();
        if (!catalog) {
            catalog = std::make_unique<MapCatalog>();
            catalog->setInstalledMapsVersion(text("1.2"));
        }
        catalog->updateCatalog();
        return *catalog;
    }

    /** Regions without children: "R0", "Region 0" and so on. */
    static QList<WorldRegion> many(int count, const QByteArray &prefix = "R")
    {
        QList<WorldRegion> regions;
        for (int i = 0; i < count; ++i) {
            const QByteArray number = QByteArray::number(i);
            regions.append(WorldRegion {prefix + number, "Region " + number});
        }
        return regions;
    }

    /** All countries and their subdivisions, as the package iso-codes has them. */
    static QList<WorldRegion> countries()
    {
        QMap<QByteArray, WorldRegion> countries;
        const QJsonArray names = IsoCodes::entries("3166-1");
        for (const QJsonValue &entry : names) {
            const QByteArray id = IsoCodes::field(entry, "alpha_2");
            countries.insert(id, WorldRegion {id, IsoCodes::field(entry, "name")});
        }
        const QJsonArray parts = IsoCodes::entries("3166-2");
        for (const QJsonValue &entry : parts) {
            const QByteArray id = IsoCodes::field(entry, "code");
            countries[id.left(2)].children.append(WorldRegion {id, IsoCodes::field(entry, "name")});
        }
        return countries.values();
    }

    MapData data;
    QList<WorldRegion> regions;
    QMap<QByteArray, QByteArray> localNames;
    QList<ContentRegion> installed;
    std::unique_ptr<MapCatalog> catalog;

private:
    static QByteArray elements(const QList<WorldRegion> &regions)
    {
        QByteArray xml;
        for (const WorldRegion &region : regions)
            xml += "<File Id=\"" + region.id + "\" Description=\""
                + QString::fromUtf8(region.name).toHtmlEscaped().toUtf8() + "\" ZipFileSize=\""
                + QByteArray::number(region.size) + "\" Link=\"" + region.link + "\">"
                + elements(region.children) + "</File>\n";
        return xml;
    }
};

/** Runs the event loop until the model has taken everything over. */
inline void settle(const RegionModel &model)
{
    QTRY_VERIFY_WITH_TIMEOUT(!model.loading(), 30000);
    QCoreApplication::processEvents(); // what is counted and told at the end
}

/** The ids of the rows, in their order. */
inline QStringList ids(const QAbstractItemModel &model)
{
    QStringList ids;
    for (int row = 0; row < model.rowCount(); ++row)
        ids.append(model.index(row, 0).data(RegionModel::RegionIdRole).toString());
    return ids;
}

/** A role of the region by its name. */
inline QVariant valueOf(const RegionModel &model, const char *id, const char *role)
{
    return model.get(text(id)).value(text(role));
}
