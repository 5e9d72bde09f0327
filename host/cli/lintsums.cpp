// SPDX-License-Identifier: MIT
#include "host/cli/lintsums.h"

#include "host/shared/folderops.h"
#include <algorithm>
#include <optional>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace {

constexpr qint64 MaxFileBytes = 256 * 1024 * 1024;

/** One line of the list. */
struct SumLine
{
    QString file;
    QByteArray sum; ///< in lower case
    int offset = 0; ///< of the file's name
};

// What a backslash at the line's beginning announces; null where it is something else.
QString unescaped(const QString &text)
{
    QString result = QLatin1String("");
    for (int at = 0; at < text.size(); ++at) {
        if (text.at(at) != QLatin1Char('\\')) {
            result += text.at(at);
            continue;
        }
        ++at;
        const QChar c = at < text.size() ? text.at(at) : QChar();
        if (c == QLatin1Char('\\'))
            result += c;
        else if (c == QLatin1Char('n'))
            result += QLatin1Char('\n');
        else if (c == QLatin1Char('r'))
            result += QLatin1Char('\r');
        else
            return QString();
    }
    return result;
}

// "SUM  NAME", "SUM *NAME" and "SHA256 (NAME) = SUM".
std::optional<SumLine> parsed(const QString &text)
{
    static const QRegularExpression plain(QStringLiteral(
        "\\A[ \\t]*(?<escape>\\\\?)(?<sum>[0-9A-Fa-f]{64})[ \\t][ *]?(?<file>.+)\\z"));
    static const QRegularExpression tagged(
        QStringLiteral("\\A[ \\t]*(?<escape>\\\\?)SHA256 ?\\((?<file>.+)\\)[ \\t]*=[ \\t]*"
                       "(?<sum>[0-9A-Fa-f]{64})\\z"));
    auto match = plain.match(text);
    if (!match.hasMatch())
        match = tagged.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    SumLine line;
    line.file = match.captured(QStringLiteral("file"));
    if (!match.captured(QStringLiteral("escape")).isEmpty())
        line.file = unescaped(line.file);
    if (line.file.isEmpty())
        return std::nullopt;
    line.sum = match.captured(QStringLiteral("sum")).toLower().toLatin1();
    line.offset = int(match.capturedStart(QStringLiteral("file")));
    return line;
}

} // namespace

LintSums::LintSums(const QString &folder, LintReport *report)
    : m_folder(folder)
    , m_report(report)
{ }

QString LintSums::fileName()
{
    return QStringLiteral("SHA256SUMS");
}

void LintSums::check(const QStringList &published)
{
    const QFileInfo info(m_folder + QLatin1Char('/') + fileName());
    QFile list(info.filePath());
    if (!info.isFile() || info.size() > MaxFileBytes || !list.open(QIODevice::ReadOnly)) {
        add(0, "unreadable", tr("it is no file that can be read, or larger than 256 MiB"));
        return;
    }
    bool isEmpty = true;
    while (!list.atEnd()) {
        QString text = QString::fromUtf8(list.readLine());
        ++m_line;
        if (text.endsWith(QLatin1Char('\n')))
            text.chop(1);
        if (text.endsWith(QLatin1Char('\r')))
            text.chop(1);
        if (text.isEmpty() || text.startsWith(QLatin1Char('#')))
            continue;
        isEmpty = false;
        checkLine(text);
    }
    m_line = 0;
    if (isEmpty)
        add(0, "empty", tr("there is no check sum in it"));
    else
        checkPublished(published);
}

void LintSums::checkLine(const QString &text)
{
    const std::optional<SumLine> line = parsed(text);
    if (!line) {
        add(1, "check-sum",
            tr("%1 is no SHA-256 sum and the name of a file").arg(LintReport::quoted(text)));
        return;
    }
    ++m_report->checkSums;
    checkFile(line->file, line->sum, int(text.left(line->offset).toUcs4().size()) + 1);
}

void LintSums::checkFile(const QString &file, const QByteArray &sum, int column)
{
    const QString name = LintReport::quoted(file);
    const QString inFolder = QDir::cleanPath(file);
    if (QDir::isAbsolutePath(inFolder) || FolderOps::leadsOut(inFolder)) {
        add(column, "outside", tr("%1 leads out of what is published").arg(name));
        return;
    }
    m_listed.insert(inFolder);
    QFile bytes(m_folder + QLatin1Char('/') + inFolder);
    if (!QFileInfo(bytes).isFile()) {
        add(column, "missing-file", tr("there is no %1").arg(name));
        return;
    }
    if (onFile)
        onFile(inFolder);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!bytes.open(QIODevice::ReadOnly) || !hash.addData(&bytes))
        add(column, "unreadable", tr("%1 cannot be read").arg(name));
    else if (hash.result().toHex() != sum)
        add(column, "other-sum", tr("%1 has another check sum").arg(name));
}

// A list that was not renewed fits all of its files, and says nothing of the new ones.
void LintSums::checkPublished(QStringList published)
{
    const auto isSettled = [this](const QString &file) {
        return m_listed.contains(file) || !QFileInfo(m_folder + QLatin1Char('/') + file).isFile();
    };
    published.erase(std::remove_if(published.begin(), published.end(), isSettled), published.end());
    if (published.isEmpty())
        return;
    published.sort();
    add(0, "no-sum",
        tr("files without a check sum: %1; the first is %2")
            .arg(QString::number(published.size()), LintReport::quoted(published.first())));
}

void LintSums::add(int column, const char *kind, const QString &text)
{
    m_report->add(fileName(), {m_line, column}, kind, text);
}
