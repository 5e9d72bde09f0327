// SPDX-License-Identifier: MIT
#ifndef VEXA_MAPREGION_H
#define VEXA_MAPREGION_H

#include "plugin/qtcompat.h"
#include "vexa_export.h"
#include <QByteArray>
#include <QList>
#include <QObject>
#include <QQmlListProperty>
#include <QString>
#include <QStringList>

/**
 * One map region that can be downloaded: a country, a state or a province.
 *
 * The catalogue makes and fills the regions while it reads its files; QML reads them and follows
 * the change signals. A region only keeps values: it never touches the disk or the network.
 *
 * Regions live in the thread of the QML engine and have no QObject parent. They belong to the
 * catalogue processor and die at its next readCatalog(), so nobody may keep a pointer to one
 * across an update. A region does not own its children.
 */
class VEXA_EXPORT MapRegion : public QObject
{
    Q_OBJECT
    /** The identifier that the catalogue file gives; never changes. */
    Q_PROPERTY(QString id READ id NOTIFY idChanged)
    /** The name in the catalogue. */
    Q_PROPERTY(QString name READ name NOTIFY nameChanged)
    /** The tile files; empty until the region is installed. */
    Q_PROPERTY(QStringList fileList READ fileList NOTIFY fileListChanged)
    /** The name in the user's language; empty if the region-name file has none. */
    Q_PROPERTY(QString localizedName READ localizedName NOTIFY localizedNameChanged)
    /** Whether the content file lists the region. */
    Q_PROPERTY(bool installed READ installed NOTIFY installedChanged)
    /** The regions nested in this one. QML can only read the list; appending does nothing. */
    Q_PROPERTY(QQmlListProperty<MapRegion> children READ children NOTIFY childrenChanged)
    /** Whether this is a child of another region. */
    Q_PROPERTY(bool hasParent READ hasParent NOTIFY hasParentChanged)
    /** Size of the archive on the server, in bytes; 0 until the catalogue has told it. */
    Q_PROPERTY(qlonglong downloadSize READ downloadSize NOTIFY downloadSizeChanged)
    /** Address of the archive. */
    Q_PROPERTY(QString downloadUrl READ downloadUrl NOTIFY downloadUrlChanged)

public:
    /** Makes an empty region. Runs the event loop once, as createDeclarativeList() does. */
    explicit MapRegion(const QString &id);

    /** The identifier that the constructor was given; the key in every file and call. */
    QString id() const;
    /** The name in the catalogue file; empty until the catalogue has called setName(). */
    QString name() const;
    /**
     * The tiles below the tile-cache folder, as the content file (with a separator in front) or
     * the caller of addInstalledRegion() names them; empty until setFileList().
     */
    QStringList fileList() const;
    /** The name in the user's language; empty means that name() is to be shown. */
    QString localizedName() const;
    /** Whether the region counts as installed; false at first. Says nothing about the files. */
    bool installed() const;
    /** The regions nested in this one; empty for a leaf. A view that lives as long as this does. */
    QQmlListProperty<MapRegion> children() const;
    /** Whether the region is listed below another one; false at first. */
    bool hasParent() const;
    /** Size of the archive on the server, in bytes; 0 when unknown. */
    qint64 downloadSize() const;
    /** Address of the archive as the catalogue file has it, which may be a relative one. */
    QString downloadUrl() const;
    /** Size once installed, in bytes; 0 when unknown. Not shown to QML. */
    qint64 installationSize() const;

    /** Emits nameChanged(), like every emitting setter here also when the value stays the same. */
    void setName(const QString &name);
    /** Emits localizedNameChanged(); the catalogue calls it when it has read the region names. */
    void setLocalizedName(const QString &localizedName);
    /** Emits installedChanged(). Only marks the region: files and lists are the catalogue's work.
     */
    void setInstalled(bool installed);
    /** Keeps the entries that contain ".cdt" anywhere, drops the others, emits fileListChanged().
     */
    void setFileList(const QStringList &fileList);
    /** Appends a child, not owned, and emits childrenChanged(). */
    void addChild(MapRegion *child);
    /**
     * Sets both sizes, in bytes. Emits nothing: the catalogue calls this once, before QML has
     * bound to the region.
     */
    void setSize(qint64 downloadSize, qint64 installationSize);
    /** Emits nothing, for the same reason. */
    void setHasParent(bool hasParent);
    /** Emits nothing, for the same reason. */
    void setDownloadUrl(const QString &downloadUrl);

    /**
     * A view of the list for QML, which follows the list but cannot change it. Neither is owned;
     * both must outlive the view. Runs the event loop first, so that what is pending has happened
     * before QML looks.
     */
    static QQmlListProperty<MapRegion> createDeclarativeList(QObject *owner,
                                                             QList<MapRegion *> *list);

    /**
     * Makes the class known to QML as an element of lists and as a result; the constructors of
     * regions and catalogues call it. It gets no name there: QML cannot make regions.
     */
    static void registerType();

    /** Does nothing: QML cannot add regions. */
    static void append(QQmlListProperty<MapRegion> *property, MapRegion *region);
    /** The length of the list behind the view. */
    static VexaCompat::ListIndex count(QQmlListProperty<MapRegion> *property);
    /** The region at the index; null if the list has become shorter meanwhile. */
    static MapRegion *at(QQmlListProperty<MapRegion> *property, VexaCompat::ListIndex index);

Q_SIGNALS:
    /** Never emitted: the identifier does not change. */
    void idChanged();
    /** During a load, when the region-name file has been read. */
    void localizedNameChanged();
    /** While the catalogue file is read, before QML can see the region. */
    void nameChanged();
    /** The region was installed or updated, or a load has found its tiles. Not at a removal. */
    void fileListChanged();
    /** The region was installed, updated (then twice: false, true) or removed, or loaded as such.
     */
    void installedChanged();
    /** While the catalogue file is read, before QML can see the region. */
    void childrenChanged();
    /** Never emitted; see setHasParent(). */
    void hasParentChanged();
    /** Never emitted; see setSize(). */
    void downloadSizeChanged();
    /** Never emitted; see setDownloadUrl(). */
    void downloadUrlChanged();

private:
    // There may be 200,000 of these, so neither gaps nor wide letters where narrow ones do.
    QString m_id;
    QString m_name;
    QString m_localizedName;
    QByteArray m_downloadUrl; // UTF-8
    QStringList m_fileList;
    QList<MapRegion *> m_children; // not owned
    qint64 m_downloadSize = 0;
    qint64 m_installationSize = 0;
    bool m_installed = false;
    bool m_hasParent = false;
};

#endif
