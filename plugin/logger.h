// SPDX-License-Identifier: MIT
#ifndef VEXA_LOGGER_H
#define VEXA_LOGGER_H

#include "vexa_export.h"
#include <atomic>
#include <QObject>
#include <QString>

/**
 * The one logger of the library. The plugin gives it to QML as the context property "log", so that
 * pages log with the same levels and the same lines as the native code.
 *
 * A line passes when the level is high enough: 1 lets errors pass, 2 (the default) warnings too, 3
 * informations too, 4 traces too; 0 and below nothing, above 4 everything. A line that passes goes
 * to Qt's message handler in one call, as a quote, "[ERROR] " (or "[WARNING] ", "[INFO] ",
 * "[TRACE] "), the message, " at " and the location if there is one, a quote and a blank; nothing
 * in it is escaped. Errors are of type QtCriticalMsg, warnings QtWarningMsg, the others QtDebugMsg.
 *
 * The location is reduced to Latin-1 ("?" stands for what that cannot write); the message is not.
 *
 * The first call of og() must come before a second thread logs; constructing a Worker sees to
 * that. Everything else may be called from any thread. The instance is never deleted.
 */
class VEXA_EXPORT L : public QObject
{
    Q_OBJECT

public:
    /** What setLogLevel() takes; the levels in between are not used. */
    enum Level : int {
        Off = 0, ///< no line passes
        Error = 1, ///< errors pass
        Warning = 2, ///< warnings pass too; the level after construction
        Info = 3, ///< informations pass too
        Trace = 4, ///< everything passes
    };

    /** The instance; null until the first og(). */
    static L *s_instance;

    /** Returns the one logger, making it at the first call. It is never null. */
    static L *og();

    /** Sets the level; from 4 on it also writes the line "Set loglevel to  N " without quotes. */
    Q_INVOKABLE void setLogLevel(int loglvl);
    /** The same for a level written as text; what is not a number means 0, off. */
    Q_INVOKABLE void setLogLevel(QString loglvl);
    /** The level, as it was set. */
    Q_INVOKABLE int getLogLevel() const;

    /** Writes an information line. */
    Q_INVOKABLE void print(QString message);
    /**
     * Writes a line of the kind that the number names: up to 1 an error, 2 a warning, 3 an
     * information, from 4 on a trace. 0 is an error here and not "off".
     */
    Q_INVOKABLE void print(QString message, int lvl);

    /** Writes a line if the level is 4 or more. */
    Q_INVOKABLE void trace(QString message);
    /** The same with the place it comes from, by custom the calling function's signature. */
    Q_INVOKABLE void trace(QString message, QString location);
    /** Writes a line if the level is 3 or more. */
    Q_INVOKABLE void info(QString message);
    /** The same with the place it comes from. */
    Q_INVOKABLE void info(QString message, QString location);
    /** Writes a line if the level is 2 or more. */
    Q_INVOKABLE void warning(QString message);
    /** The same with the place it comes from. */
    Q_INVOKABLE void warning(QString message, QString location);
    /** Writes a line if the level is 1 or more. */
    Q_INVOKABLE void error(QString message);
    /** The same with the place it comes from. */
    Q_INVOKABLE void error(QString message, QString location);

    /** Whether a line of this kind would be written: for callers whose text is costly to build. */
    bool passes(Level kind) const;

private:
    L();
    void write(Level kind, const QString &message, const QString &location) const;

    std::atomic<int> m_level {Warning};
};

#endif
