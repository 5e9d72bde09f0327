// SPDX-License-Identifier: MIT
#include "cityindex/cityindex.h"

#include <QPointer>
#include <qqml.h>

CityIndex::CityIndex(QObject *parent)
    : QObject(parent)
{
    registerType();
}

CityIndex::CityIndex(const QString &id, const QString &name, const QString &version)
    : CityIndex(nullptr)
{
    set(id, name, version);
}

CityIndex::CityIndex(const CityIndex &other)
    : CityIndex(nullptr)
{
    *this = other;
}

CityIndex &CityIndex::operator=(const CityIndex &other)
{
    set(other.id(), other.name(), other.version());
    return *this;
}

QString CityIndex::id() const
{
    return m_id;
}

QString CityIndex::name() const
{
    return m_name;
}

QString CityIndex::version() const
{
    return m_version;
}

void CityIndex::set(const QString &id, const QString &name, const QString &version)
{
    // Each signal may bring the end of the record, with that of its list, or a newer set().
    const QPointer<CityIndex> self(this);
    const int call = ++m_sets;
    setId(id);
    if (self && call == m_sets)
        setName(name);
    if (self && call == m_sets)
        setVersion(version);
}

void CityIndex::setId(const QString &id)
{
    m_id = id;
    Q_EMIT idChanged();
}

void CityIndex::setName(const QString &name)
{
    m_name = name;
    Q_EMIT nameChanged();
}

void CityIndex::setVersion(const QString &version)
{
    m_version = version;
    Q_EMIT versionChanged();
}

void CityIndex::registerType()
{
    // Not under the name "Vexa": a type registered there before the plugin loads makes the import
    // of the plugin fail.
    static const int once = qmlRegisterAnonymousType<CityIndex>("VexaTypes", 1);
    Q_UNUSED(once);
}
