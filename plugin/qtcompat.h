// SPDX-License-Identifier: MIT
#ifndef VEXA_QTCOMPAT_H
#define VEXA_QTCOMPAT_H

#include <QByteArray>
#include <QDeadlineTimer>
#include <QMutex>
#include <QSettings>
#include <QString>
#include <QtGlobal>
#include <QWaitCondition>
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
#include <QStringConverter>
#else
#include <QTextCodec>
#endif
#if defined(__SANITIZE_THREAD__)
#include <sanitizer/tsan_interface.h>
#endif

/**
 * What cannot be written the same way for Qt 5.15 and Qt 6, and for a Qt that is not built with our
 * checkers. This is the only file that asks for the Qt version; each entry says what changed.
 */
namespace VexaCompat {

/** The type of lengths and indexes in a QQmlListProperty, which is qsizetype since Qt 6. */
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
using ListIndex = qsizetype;
#else
using ListIndex = int;
#endif

/** The style of Qt Quick's controls that adds nothing of its own; Qt 6 has renamed it. */
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
inline constexpr char PlainControlsStyle[] = "Basic";
#else
inline constexpr char PlainControlsStyle[] = "Default";
#endif

/**
 * Makes the settings write UTF-8. Qt 6 always does; Qt 5 wrote escapes, and read the UTF-8 that
 * Qt 6 had left as garbage. To be called before the first read or write.
 */
inline void useUtf8(QSettings &settings)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    Q_UNUSED(settings);
#else
    settings.setIniCodec("UTF-8");
#endif
}

/**
 * Turns bytes into text piece by piece. A byte order mark decides the encoding, else the name that
 * is given, else (also for a name that Qt does not know) UTF-8. Bytes that are wrong in the
 * encoding become U+FFFD. QTextCodec left QtCore with Qt 6, QStringDecoder came with it.
 */
class TextDecoder
{
public:
    /** start: the first bytes of the text (4 or more, where it has them); name: may be empty. */
    TextDecoder(const QByteArray &start, const QByteArray &name)
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
        : m_decoder(make(start, name))
#else
        : m_decoder(codec(start, name)->makeDecoder())
#endif
    { }

    /** The text of the next bytes; a character that they cut is given with the following ones. */
    QString decode(const QByteArray &bytes)
    {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
        return m_decoder.decode(bytes);
#else
        return m_decoder->toUnicode(bytes);
#endif
    }

private:
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    static QStringDecoder make(const QByteArray &start, const QByteArray &name)
    {
        if (const auto mark = QStringConverter::encodingForData(start))
            return QStringDecoder(*mark);
        QStringDecoder named(name.isEmpty() ? "UTF-8" : name.constData());
        return named.isValid() ? std::move(named) : QStringDecoder(QStringConverter::Utf8);
    }
    QStringDecoder m_decoder;
#else
    static QTextCodec *codec(const QByteArray &start, const QByteArray &name)
    {
        QTextCodec *found = QTextCodec::codecForUtfText(start, nullptr);
        if (!found && !name.isEmpty())
            found = QTextCodec::codecForName(name);
        return found ? found : QTextCodec::codecForName("UTF-8");
    }
    QScopedPointer<QTextDecoder> m_decoder;
#endif
};

/**
 * A wait condition that the thread checker understands. Qt's own frees the mutex and takes it again
 * where that cannot see it; it would believe that the waiter held the mutex all the while, and
 * report whoever took it in between. In other builds it is Qt's and nothing more.
 */
class WaitCondition : public QWaitCondition
{
public:
    /** Waits until it is woken, or at most so many ms; tells whether it was woken. */
    bool wait(QMutex *mutex, int ms = -1)
    {
#if defined(__SANITIZE_THREAD__)
        __tsan_mutex_pre_unlock(mutex, 0);
        __tsan_mutex_post_unlock(mutex, 0);
#endif
        const bool woken = QWaitCondition::wait(
            mutex, ms < 0 ? QDeadlineTimer(QDeadlineTimer::Forever) : QDeadlineTimer(ms));
#if defined(__SANITIZE_THREAD__)
        __tsan_mutex_pre_lock(mutex, 0);
        __tsan_mutex_post_lock(mutex, 0, 0);
#endif
        return woken;
    }
};

} // namespace VexaCompat

#endif
