// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <QQmlPropertyMap>
#include <QString>
#include <QStringList>
#include <QVector>

/** One of the ways in which the page of the update can look. */
struct UpdateView
{
    QString name;
    QVariantMap values; ///< of a MapsUpdate, where they are not those of one that does nothing
    QString newerVersion;
    QStringList dialogs; ///< object names of those that belong to it
    bool showsElsewhere = false; ///< other pages tell of it, too
};

/** Made-up values of a MapsUpdate, for the self-test: an update takes a server. */
namespace UpdateViews {

QVector<UpdateView> all();

/** An object with all properties of a MapsUpdate. */
std::unique_ptr<QQmlPropertyMap> values(const UpdateView &view);

} // namespace UpdateViews
