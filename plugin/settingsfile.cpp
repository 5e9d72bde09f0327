// SPDX-License-Identifier: MIT
#include "plugin/settingsfile_p.h"

#include "plugin/logger.h"
#include <cstdio>
#include <QFile>

namespace {

bool isOctal(char c)
{
    return c >= '0' && c <= '7';
}

bool isHex(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// The character whose number stands there; the place moves behind the number. Nothing is appended
// where there is no digit, as in QSettings, and a 0 stands for what is not ASCII.
void appendNumbered(const QByteArray &bytes, int *at, bool isHexNumber, QByteArray *text)
{
    const int begin = *at;
    ushort unit = 0; // which loses the upper digits of a long number, as in QSettings
    while (*at < bytes.size() && (isHexNumber ? isHex(bytes.at(*at)) : isOctal(bytes.at(*at)))) {
        const int digit = bytes.mid(*at, 1).toInt(nullptr, 16);
        unit = ushort(unit * (isHexNumber ? 16 : 8) + digit);
        ++*at;
    }
    if (*at > begin)
        *text += unit < 0x80 ? char(unit) : '\0';
}

// What stands behind a backslash; the place moves behind it.
void appendEscaped(const QByteArray &bytes, int *at, QByteArray *text)
{
    const char escape = bytes.at(*at);
    if (isOctal(escape)) {
        appendNumbered(bytes, at, false, text);
        return;
    }
    ++*at;
    if (escape == 'x')
        appendNumbered(bytes, at, true, text);
    else if (QByteArray("abfnrtv").contains(escape))
        *text += '\0'; // a character of which no word here is made
    else if (escape == '\\')
        *text += escape;
    else if (escape == '\r' && *at < bytes.size() && bytes.at(*at) == '\n')
        ++*at;
}

// The file as QSettings puts values together. What it leaves out in some places (quotes, blanks,
// byte order marks, line ends behind a backslash, escapes that mean nothing) is left out in all.
QByteArray unescaped(QByteArray bytes)
{
    bytes.replace("\xef\xbb\xbf", "");
    QByteArray text;
    text.reserve(bytes.size());
    int at = 0;
    while (at < bytes.size()) {
        const char c = bytes.at(at++);
        const bool isEscape = c == '\\' && at < bytes.size();
        if (isEscape)
            appendEscaped(bytes, &at, &text);
        else if (c != '"' && c != ' ' && c != '\t' && c != '\\' && c != '\r')
            text += c;
    }
    return text;
}

bool holds(const QByteArray &text, const QByteArray &word)
{
    for (auto at = text.indexOf(word); at >= 0; at = text.indexOf(word, at + 1)) {
        // A text that begins like that is stored with two of them, or as "@String(@Variant(".
        const auto before = QByteArray::fromRawData(text.constData(), int(at));
        if (!before.endsWith('@') && !before.endsWith("@String("))
            return true;
    }
    return false;
}

} // namespace

bool SettingsFile::holdsPackedValues(const QByteArray &bytes)
{
    const QByteArray text = unescaped(bytes);
    return holds(text, "@Variant(") || holds(text, "@DateTime(");
}

bool SettingsFile::setDamagedAside(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || !holdsPackedValues(file.readAll()))
        return false;
    file.close();
    const QString aside = path + QLatin1String(".damaged");
    L::og()->warning(QLatin1String("The settings are damaged and go to ") + aside);
    // Not QFile's, which never replaces a file.
    return std::rename(QFile::encodeName(path).constData(), QFile::encodeName(aside).constData())
        == 0;
}
