// SPDX-License-Identifier: MIT
#ifndef VEXA_ARCHIVENAMES_P_H
#define VEXA_ARCHIVENAMES_P_H

#include <locale.h>
#include <QByteArray>
#include <QString>
#include <QtGlobal>

/** How names come out of libarchive, the same for whoever unpacks and whoever only lists. */
namespace ArchiveNames {

/**
 * Gives the calling thread a UTF-8 locale while it lives. libarchive converts names by the locale:
 * in another one, pax headers become warnings and names of 7z files null. Never held while foreign
 * code runs (a signal, an event loop): that is to have the locale of the program.
 */
class Utf8Locale
{
public:
    Utf8Locale()
        : m_previous(uselocale(utf8()))
    { }
    ~Utf8Locale() { uselocale(m_previous); }
    Q_DISABLE_COPY(Utf8Locale)

private:
    static locale_t utf8()
    {
        // Kept for good: other threads may be using it. Null, on a system without this locale,
        // makes uselocale() change nothing.
        static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        return locale;
    }

    locale_t m_previous;
};

/** UTF-8 if it is that, else Latin-1, in which every byte is some character. Null gives null. */
inline QString decoded(const char *bytes)
{
    if (!bytes)
        return QString();
    // Behind a slash, where fromUtf8() does not drop a byte order mark.
    const QByteArray guarded = QByteArray("/").append(bytes);
    const QString text = QString::fromUtf8(guarded);
    return text.toUtf8() == guarded ? text.mid(1) : QString::fromLatin1(bytes);
}

} // namespace ArchiveNames

#endif
