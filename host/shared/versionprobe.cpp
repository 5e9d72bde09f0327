// SPDX-License-Identifier: MIT
#include "host/shared/versionprobe.h"

#include "host/shared/catalogfiles.h"
#include "host/shared/mapsversion.h"
#include <QNetworkRequest>
#include <QUrl>

VersionProbe::VersionProbe(const QString &baseUri, QObject *parent)
    : QObject(parent)
    , m_baseUri(baseUri)
{ }

void VersionProbe::start()
{
    QNetworkRequest request(QUrl(m_baseUri).resolved(QUrl(CatalogFiles::versionName())));
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    // An answer kept by somebody in between would hide a new version.
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                         QNetworkRequest::AlwaysNetwork);
    m_reply.reset(m_network.get(request));
    connect(m_reply.get(), &QNetworkReply::readyRead, this, &VersionProbe::read);
    connect(m_reply.get(), &QNetworkReply::finished, this, &VersionProbe::finish,
            Qt::QueuedConnection);
}

QString VersionProbe::version() const
{
    return m_version;
}

FailureKind VersionProbe::failure() const
{
    return m_failure;
}

QString VersionProbe::errorString() const
{
    return m_errorString;
}

void VersionProbe::read()
{
    m_bytes += m_reply->readAll();
    if (m_bytes.size() > MapsVersion::MaxFileSize)
        m_reply->abort(); // Somebody sends without end.
}

void VersionProbe::finish()
{
    const bool tooLong = m_bytes.size() > MapsVersion::MaxFileSize;
    if (m_reply->error() != QNetworkReply::NoError && !tooLong) {
        m_failure = FailureKind::Network;
        m_errorString = tr("%1 cannot be reached, or it is no map server.").arg(m_baseUri);
    } else if (!tooLong) {
        m_bytes += m_reply->readAll();
        m_version = MapsVersion::parse(m_bytes);
    }
    if (m_version.isEmpty() && m_failure == FailureKind::None) {
        m_failure = FailureKind::Catalogue;
        m_errorString = tr("%1 names no usable map version.").arg(m_baseUri);
    }
    Q_EMIT finished();
}
