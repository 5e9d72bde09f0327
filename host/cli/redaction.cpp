// SPDX-License-Identifier: MIT
#include "host/cli/redaction.h"

#include "plugin/dataroot.h"
#include <algorithm>
#include <pwd.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSysInfo>
#include <QUrl>
#include <unistd.h>

namespace {

const QLatin1String WellKnown("/home/user/MyDocs");

// What stands in front of a path or behind it, so that "/home/anna" is not found in
// "/home/annabel".
bool isPartOfName(QChar c)
{
    return c.isLetterOrNumber();
}

QString replaced(const QString &text, const QString &from, const QString &to, bool isFolder)
{
    QString result;
    auto at = text.indexOf(from);
    decltype(at) done = 0;
    while (at >= 0) {
        const auto end = at + from.size();
        const bool continues = end < text.size() && isPartOfName(text.at(end));
        // In front of a folder anything may stand: "file=/home/anna".
        const bool isInside = !isFolder && at > 0 && isPartOfName(text.at(at - 1));
        // The place that is the same on every device.
        const bool isWellKnown = isFolder && WellKnown.size() > from.size()
            && text.size() - at >= WellKnown.size()
            && std::equal(WellKnown.begin(), WellKnown.end(), text.constData() + at,
                          [](char a, QChar b) { return QLatin1Char(a) == b; });
        if (!continues && !isInside && !isWellKnown) {
            result += text.mid(done, at - done) + to;
            done = end;
        }
        at = text.indexOf(from, end);
    }
    return result + text.mid(done);
}

} // namespace

Redaction::Redaction()
{
    addFolder(DataRoot::myDocs(), QStringLiteral("<data>"));
    addFolder(QDir::homePath(), QStringLiteral("<home>"));
    if (const passwd *account = getpwuid(getuid())) {
        addFolder(QFile::decodeName(account->pw_dir), QStringLiteral("<home>"));
        addWord(QFile::decodeName(account->pw_name), QStringLiteral("<user>"));
    }
    addWord(qEnvironmentVariable("USER"), QStringLiteral("<user>"));
    addWord(qEnvironmentVariable("LOGNAME"), QStringLiteral("<user>"));
    addWord(QDir(QDir::homePath()).dirName(), QStringLiteral("<user>"));
    addWord(QSysInfo::machineHostName(), QStringLiteral("<computer>"));
    std::stable_sort(m_folders.begin(), m_folders.end(),
                     [](const Rule &a, const Rule &b) { return a.from.size() > b.from.size(); });
}

void Redaction::addFolder(const QString &path, const QString &placeholder)
{
    const QString clean = QDir::cleanPath(path);
    if (clean.size() < 2 || clean == WellKnown)
        return;
    m_folders.append({clean, placeholder});
    // As a link leads there, and as addresses write it.
    const QString real = QFileInfo(clean).canonicalFilePath();
    if (real.size() > 1 && real != clean && real != WellKnown)
        m_folders.append({real, placeholder});
    const QString encoded = QString::fromLatin1(QUrl::toPercentEncoding(clean, "/"));
    if (encoded != clean)
        m_folders.append({encoded, placeholder});
}

// The names that are the same everywhere tell nothing, and stand in other words' places.
void Redaction::addWord(const QString &word, const QString &placeholder)
{
    static const QStringList common {QStringLiteral("user"), QStringLiteral("root"),
                                     QStringLiteral("home"), QStringLiteral("localhost"),
                                     QStringLiteral(".vexa-home")};
    if (word.size() > 1 && !common.contains(word))
        m_words.append({word, placeholder});
}

QString Redaction::applied(const QString &text) const
{
    QString result = withoutSecrets(text);
    for (const Rule &rule : m_folders)
        result = replaced(result, rule.from, rule.to, true);
    for (const Rule &rule : m_words)
        result = replaced(result, rule.from, rule.to, false);
    return result;
}

QString Redaction::withoutSecrets(const QString &text)
{
    // Up to the last "@" in front of the path: a password may have one, too.
    static const QRegularExpression credentials(
        QStringLiteral("([A-Za-z][A-Za-z0-9+.-]*://)[^/?#\\s]*@"));
    static const QRegularExpression query(
        QStringLiteral("([A-Za-z][A-Za-z0-9+.-]*://[^?#\\s\"]*\\?)[^#\\s\"]+"));
    QString result = text;
    result.replace(credentials, QStringLiteral("\\1<credentials>@"));
    result.replace(query, QStringLiteral("\\1<query>"));
    return result;
}

QString Redaction::appliedToProxy(const QString &address)
{
    static const QRegularExpression form(
        QStringLiteral("\\A(?:([A-Za-z][A-Za-z0-9+.-]*)://)?(?:(.*)@)?[^@/]*?(:\\d+)?/*\\z"));
    const auto match = form.match(address);
    if (!match.hasMatch())
        return QStringLiteral("<proxy>");
    QString result;
    if (!match.captured(1).isEmpty())
        result = match.captured(1) + QLatin1String("://");
    if (!match.captured(2).isEmpty())
        result += QLatin1String("<credentials>@");
    return result + QLatin1String("<proxy>") + match.captured(3);
}

QString Redaction::explanation()
{
    return tr("<data>: the folder of the map data, where it is not /home/user/MyDocs\n"
              "<home>: the home folder\n"
              "<user>: the user's name\n"
              "<computer>: the computer's name\n"
              "<proxy>: a proxy's host\n"
              "<credentials>: name and password in an address\n"
              "<query>: what stands behind \"?\" in an address");
}
