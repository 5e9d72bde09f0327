// SPDX-License-Identifier: MIT
#include "host/cli/inifile.h"

namespace {

bool isHex(QChar c)
{
    return (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
        || (c >= QLatin1Char('a') && c <= QLatin1Char('f'))
        || (c >= QLatin1Char('A') && c <= QLatin1Char('F'));
}

// Paths are looked for in the result, so escapes must not hide them.
QString unescaped(const QString &text)
{
    QString result;
    for (int at = 0; at < text.size(); ++at) {
        const QChar c = text.at(at);
        if (c == QLatin1Char('"'))
            continue;
        if (c != QLatin1Char('\\') || at + 1 == text.size()) {
            result += c;
            continue;
        }
        const QChar escape = text.at(++at);
        if (escape != QLatin1Char('x')) {
            result += escape == QLatin1Char('n') || escape == QLatin1Char('t')
                ? QChar(QLatin1Char(' '))
                : escape;
            continue;
        }
        QString digits;
        while (at + 1 < text.size() && isHex(text.at(at + 1)))
            digits += text.at(++at);
        result += QChar(ushort(digits.right(4).toUInt(nullptr, 16)));
    }
    return result;
}

// The key's own escapes: "1\url" is an entry of a list, "%20" a blank.
QString keyOf(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return QString::fromUtf8(QByteArray::fromPercentEncoding(text.toUtf8()));
}

} // namespace

QList<QPair<QString, QString>> IniFile::read(const QByteArray &bytes)
{
    QList<QPair<QString, QString>> result;
    QString group;
    // With its size: Qt 5 would take a null character for the end.
    const QStringList lines =
        QString::fromUtf8(bytes.constData(), bytes.size()).split(QLatin1Char('\n'));
    for (const QString &whole : lines) {
        const QString line = whole.trimmed();
        const auto equals = line.indexOf(QLatin1Char('='));
        if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']')))
            group = keyOf(line.mid(1, line.size() - 2)) + QLatin1Char('/');
        else if (equals > 0 && !line.startsWith(QLatin1Char(';')))
            result.append({group + keyOf(line.left(equals).trimmed()),
                           unescaped(line.mid(equals + 1).trimmed())});
    }
    return result;
}
