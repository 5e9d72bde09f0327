// SPDX-License-Identifier: MIT
#include "host/shared/searchtext.h"

#include <algorithm>

namespace {

// Letters that Unicode does not take apart, although people leave their stroke or dot out, or
// write two letters. Small letters only: the text is case-folded before.
QLatin1String plainLetters(QChar letter)
{
    switch (letter.unicode()) {
    case u'ø':
        return QLatin1String("o");
    case u'ł':
        return QLatin1String("l");
    case u'đ':
    case u'ð':
        return QLatin1String("d");
    case u'ħ':
        return QLatin1String("h");
    case u'ŧ':
        return QLatin1String("t");
    case u'ı':
        return QLatin1String("i");
    case u'ə':
        return QLatin1String("e");
    case u'æ':
        return QLatin1String("ae");
    case u'œ':
        return QLatin1String("oe");
    case u'ß':
        return QLatin1String("ss");
    case u'þ':
        return QLatin1String("th");
    default:
        return QLatin1String();
    }
}

bool isMark(QChar c)
{
    return c.category() == QChar::Mark_NonSpacing || c.category() == QChar::Mark_Enclosing;
}

// In ASCII nothing is to be taken apart, and most names are of nothing else.
QString foldedAscii(const QString &text)
{
    QString result = text;
    for (QChar &c : result) {
        if (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
            c = QChar(c.unicode() - 'A' + 'a');
        else if (!c.isLetterOrNumber())
            c = QLatin1Char(' ');
    }
    return result.simplified();
}

bool isAscii(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

} // namespace

QString SearchText::folded(const QString &text)
{
    if (isAscii(text))
        return foldedAscii(text);
    const QString apart = text.normalized(QString::NormalizationForm_KD).toCaseFolded();
    QString result;
    result.reserve(apart.size());
    for (const QChar c : apart) {
        if (isMark(c))
            continue;
        const QLatin1String plain = plainLetters(c);
        if (!plain.isEmpty())
            result += plain;
        else if (c.isLetterOrNumber() || c.isSurrogate()
                 || c.category() == QChar::Mark_SpacingCombining)
            result += c;
        else
            result += QLatin1Char(' ');
    }
    return result.simplified();
}

QStringList SearchText::words(const QString &typed)
{
    return folded(typed).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

bool SearchText::matches(const QString &foldedText, const QStringList &words)
{
    return std::all_of(words.begin(), words.end(),
                       [&foldedText](const QString &word) { return foldedText.contains(word); });
}
