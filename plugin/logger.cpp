// SPDX-License-Identifier: MIT
#include "plugin/logger.h"

#include <QtGlobal>

L *L::s_instance = nullptr;

L::L() = default;

L *L::og()
{
    if (!s_instance)
        s_instance = new L;
    return s_instance;
}

void L::setLogLevel(int loglvl)
{
    m_level = loglvl;
    // Two blanks: the text ends in one, and a stream puts one between its items.
    if (loglvl > Info)
        qt_message_output(QtDebugMsg, QMessageLogContext(),
                          QStringLiteral("Set loglevel to  %1 ").arg(loglvl));
}

void L::setLogLevel(QString loglvl)
{
    setLogLevel(loglvl.toInt());
}

int L::getLogLevel() const
{
    return m_level;
}

void L::print(QString message)
{
    print(message, Info);
}

void L::print(QString message, int lvl)
{
    if (lvl <= Error)
        error(message);
    else if (lvl == Warning)
        warning(message);
    else if (lvl == Info)
        info(message);
    else
        trace(message);
}

void L::trace(QString message)
{
    write(Trace, message, QString());
}

void L::trace(QString message, QString location)
{
    write(Trace, message, location);
}

void L::info(QString message)
{
    write(Info, message, QString());
}

void L::info(QString message, QString location)
{
    write(Info, message, location);
}

void L::warning(QString message)
{
    write(Warning, message, QString());
}

void L::warning(QString message, QString location)
{
    write(Warning, message, location);
}

void L::error(QString message)
{
    write(Error, message, QString());
}

void L::error(QString message, QString location)
{
    write(Error, message, location);
}

bool L::passes(Level kind) const
{
    return m_level >= kind;
}

void L::write(Level kind, const QString &message, const QString &location) const
{
    if (!passes(kind))
        return;

    QLatin1String prefix("[TRACE] ");
    QtMsgType type = QtDebugMsg;
    if (kind == Error) {
        prefix = QLatin1String("[ERROR] ");
        type = QtCriticalMsg;
    } else if (kind == Warning) {
        prefix = QLatin1String("[WARNING] ");
        type = QtWarningMsg;
    } else if (kind == Info) {
        prefix = QLatin1String("[INFO] ");
    }

    QString text = QLatin1Char('"') + prefix + message;
    if (!location.isEmpty()) {
        const QByteArray latin1 = location.toLatin1();
        // With its size: Qt 5 would take a null character for the end.
        text += QLatin1String(" at ") + QString::fromLatin1(latin1.constData(), latin1.size());
    }
    // Past QDebug, which would escape quotes and everything that is not ASCII.
    qt_message_output(type, QMessageLogContext(), text + QLatin1String("\" "));
}
