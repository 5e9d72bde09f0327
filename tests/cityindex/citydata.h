// SPDX-License-Identifier: MIT
#pragma once

#include "cityindex/cityindex.h"
#include "testutils/archivebuilder.h"
#include "testutils/temporaryhome.h"
#include <QByteArray>
#include <QFile>
#include <QMap>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QString>
#include <QStringList>

inline QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/** The entries in the map's order, each as "id|name|version". */
inline QStringList rows(const QMap<QString, CityIndex> &entries)
{
    QStringList rows;
    for (const CityIndex &entry : entries)
        rows.append(QStringList {entry.id(), entry.name(), entry.version()}.join(QLatin1Char('|')));
    return rows;
}

/** A "cityindex" element. */
inline QByteArray cityElement(const QByteArray &id, const QByteArray &name,
                              const QByteArray &version = "1.0")
{
    return "<cityindex id=\"" + id + "\" name=\"" + name + "\" version=\"" + version + "\"/>";
}

/** A file as others write it, with these elements. */
inline QByteArray cityFile(const QByteArray &elements)
{
    return "<?xml version=\"1.0\" encoding=\"ANSI\"?>\n<cityindexlist>" + elements
        + "</cityindexlist>\n";
}

/** The properties that a class adds, each as "type name notify", and "writable" if it is. */
inline QStringList propertiesOf(const QMetaObject &meta)
{
    QStringList found;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        found.append(QString::fromLatin1(
            QByteArray(property.typeName()) + ' ' + property.name() + ' '
            + property.notifySignal().methodSignature()
            + (property.isWritable() || property.isResettable() ? " writable" : "")));
    }
    return found;
}

/** The methods that a class adds, each as "kind type signature (names)", "default" for clones. */
inline QStringList methodsOf(const QMetaObject &meta)
{
    QStringList found;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        const char *const kinds[] = {"invokable ", "signal ", "slot ", "constructor "};
        found.append(QString::fromLatin1(
            kinds[method.methodType()] + QByteArray(method.typeName()) + ' '
            + method.methodSignature() + " (" + method.parameterNames().join(", ") + ')'
            + (method.attributes() & QMetaMethod::Cloned ? " default" : "")));
    }
    return found;
}

/** The data root of a device that nobody has used yet. */
class CityData
{
public:
    QString root() const { return m_home.myDocs(); }
    QString folder(const char *suffix = "") const
    {
        return root() + QLatin1String("/cities/Tessarin") + text(suffix);
    }
    QString file(const char *suffix = "") const
    {
        return folder(suffix) + QLatin1String("/cityindex.xml");
    }

private:
    TemporaryHome m_home;
};
