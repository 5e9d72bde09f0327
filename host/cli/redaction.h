// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QList>
#include <QString>

/**
 * Takes out of texts what tells who their owner is, and puts named placeholders there: "<home>",
 * "<data>", "<user>", "<computer>", "<proxy>", "<credentials>", "<query>".
 *
 * What lies below "/home/user/MyDocs" keeps its path: it is the same on every device. The data root
 * and the home folder are taken when it is made, those of the user's account as well.
 */
class Redaction
{
    Q_DECLARE_TR_FUNCTIONS(Redaction)

public:
    Redaction();

    /** The text without anything personal, also in addresses that stand in it. */
    QString applied(const QString &text) const;
    /** The proxy's address without its host; a text that is no address has nothing that may stay.
     */
    static QString appliedToProxy(const QString &address);
    /** What each placeholder stands for, one a line. */
    static QString explanation();

private:
    struct Rule
    {
        QString from;
        QString to;
    };

    void addFolder(const QString &path, const QString &placeholder);
    void addWord(const QString &word, const QString &placeholder);
    static QString withoutSecrets(const QString &text);

    QList<Rule> m_folders; // longer ones first
    QList<Rule> m_words;
};
