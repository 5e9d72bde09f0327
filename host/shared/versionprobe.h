// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/regionstatus.h"
#include <memory>
#include <QByteArray>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QString>

/**
 * Asks a content server for its maps version, and nothing else: nothing is written, and the
 * download engine, whose queue may be full of other work, is not needed.
 *
 * Made per question, in the GUI thread. It waits for the server without end; whoever has waited
 * enough destroys it.
 */
class VersionProbe : public QObject
{
    Q_OBJECT

public:
    explicit VersionProbe(const QString &baseUri, QObject *parent = nullptr);

    /** Asks; finished() follows once, never before this returns. */
    void start();

    /** The version as the server spells it; empty if there was none to get. */
    QString version() const;
    /** What went wrong; None if nothing did. */
    FailureKind failure() const;
    /** The same in words. */
    QString errorString() const;

Q_SIGNALS:
    void finished();

private:
    void read();
    void finish();

    const QString m_baseUri;
    QNetworkAccessManager m_network;
    std::unique_ptr<QNetworkReply> m_reply;
    QByteArray m_bytes;
    QString m_version;
    FailureKind m_failure = FailureKind::None;
    QString m_errorString;
};
