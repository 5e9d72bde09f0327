// SPDX-License-Identifier: MIT
#pragma once

#include "cityindex/citydata.h"
#include "cityindex/cityindexlistprocessor.h"
#include <memory>
#include <QFile>
#include <QObject>
#include <QTemporaryDir>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

/** What the tests of the reader and of the writer stand on: a file, and a map of entries. */
class CityFileTest : public QObject
{
protected:
    void setUp()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_file = m_dir->filePath(text("cityindex.xml"));
        m_entries.clear();
    }
    void tearDown() { m_dir.reset(); }

    QStringList read(const QByteArray &file)
    {
        TestFile::write(m_file, file);
        return readBack();
    }
    QStringList readBack() const
    {
        QMap<QString, CityIndex> entries;
        m_processor.readCityIndexList(m_file, entries);
        return rows(entries);
    }
    void add(const QString &id, const QString &name, const QString &version)
    {
        m_entries.insert(id, CityIndex(id, name, version));
    }
    void write() const { m_processor.updateCityIndexListContent(m_file, m_entries); }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_file;
    QMap<QString, CityIndex> m_entries;
    const CityIndexListProcessor m_processor {};
};

/** Takes the superuser's powers away from this process while it lives; no other user has them. */
class WithoutPowers
{
public:
    WithoutPowers()
        : m_wasRoot(getuid() == 0)
        , m_isWithout(!m_wasRoot || setresuid(Nobody, Nobody, 0) == 0)
    { }
    ~WithoutPowers()
    {
        if (m_wasRoot && setresuid(0, 0, 0) != 0)
            qFatal("cannot become the superuser again");
        prctl(PR_SET_DUMPABLE, 1); // else the leak checker could not look at us at the end
    }
    WithoutPowers(const WithoutPowers &) = delete;
    WithoutPowers &operator=(const WithoutPowers &) = delete;

    bool worked() const { return m_isWithout; }

    /** Makes a file or folder the powerless user's, with this mode. */
    static bool give(const QString &path, mode_t mode)
    {
        const QByteArray name = QFile::encodeName(path);
        return (getuid() != 0 || chown(name.constData(), Nobody, Nobody) == 0)
            && chmod(name.constData(), mode) == 0;
    }

private:
    static constexpr uid_t Nobody = 65534;
    const bool m_wasRoot;
    const bool m_isWithout;
};
