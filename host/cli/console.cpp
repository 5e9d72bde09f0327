// SPDX-License-Identifier: MIT
#include "host/cli/console.h"

#include "host/shared/loglines.h"
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr int DefaultWidth = 80;
constexpr int BarWidth = 20;

int terminalWidth()
{
    winsize size {};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0)
        return size.ws_col;
    return DefaultWidth;
}

// What comes from a server or an archive must not steer the terminal.
QString printable(const QString &line)
{
    QString result = line;
    for (QChar &c : result) {
        if (c.category() == QChar::Other_Control && c != QLatin1Char('\n'))
            c = QLatin1Char('?');
    }
    return result;
}

} // namespace

Console::Console(Level level)
    : m_level(level)
{ }

bool Console::isTerminal() const
{
    return m_level != Level::Quiet && isatty(STDOUT_FILENO) == 1;
}

Console::Level Console::level() const
{
    return m_level;
}

void Console::result(const QString &line)
{
    write(stdout, printable(line));
}

void Console::json(const QJsonDocument &document)
{
    clearProgress();
    const QByteArray text = document.toJson(QJsonDocument::Indented);
    std::fwrite(text.constData(), 1, std::size_t(text.size()), stdout);
    std::fflush(stdout);
}

void Console::note(const QString &line)
{
    if (m_level != Level::Quiet)
        write(stdout, printable(line));
}

void Console::detail(const QString &line)
{
    if (m_level == Level::Verbose)
        write(stdout, printable(line));
}

void Console::error(const QString &line)
{
    LogLines::note(line);
    write(stderr, printable(QLatin1String("vexa-maps: ") + line));
}

void Console::progress(const QString &line)
{
    if (!isTerminal())
        return;
    // One column stays free: a full line would wrap, and the next one could not replace it.
    const QByteArray text = printable(line).left(terminalWidth() - 1).toLocal8Bit();
    std::fprintf(stdout, "\r\033[K%s", text.constData());
    std::fflush(stdout);
    m_progressShown = true;
}

void Console::ask(const QString &question)
{
    clearProgress();
    std::fputs(printable(question).toLocal8Bit().constData(), stdout);
    std::fflush(stdout);
}

QString Console::bar(double fraction)
{
    const int filled = int(fraction * BarWidth);
    return QLatin1Char('[') + QString(filled, QLatin1Char('#'))
        + QString(BarWidth - filled, QLatin1Char('-')) + QLatin1Char(']');
}

void Console::clearProgress()
{
    if (!m_progressShown)
        return;
    std::fputs("\r\033[K", stdout);
    std::fflush(stdout);
    m_progressShown = false;
}

void Console::write(std::FILE *stream, const QString &line)
{
    clearProgress();
    std::fprintf(stream, "%s\n", line.toLocal8Bit().constData());
    std::fflush(stream);
}
