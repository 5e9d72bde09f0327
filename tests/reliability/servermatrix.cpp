// SPDX-License-Identifier: MIT
#include "reliability/servermatrix.h"

using Server = HttpTestServer;
using Behaviour = HttpTestServer::Behaviour;

char letterOf(CellEnd end)
{
    switch (end) {
    case CellEnd::Whole:
        return 'W';
    case CellEnd::Wrong:
        return '!';
    case CellEnd::Failed:
        return 'F';
    case CellEnd::Refused:
        return 'R';
    case CellEnd::Damaged:
        return 'D';
    case CellEnd::OtherSize:
        return 'S';
    case CellEnd::Unknown:
        return '?';
    case CellEnd::Trying:
        break;
    }
    return 'T';
}

QString wordsOf(CellEnd end)
{
    switch (end) {
    case CellEnd::Whole:
        return QStringLiteral("whole");
    case CellEnd::Wrong:
        return QStringLiteral("WRONG FILE ACCEPTED");
    case CellEnd::Failed:
        return QStringLiteral("failed (1)");
    case CellEnd::Refused:
        return QStringLiteral("failed (4, refused)");
    case CellEnd::Damaged:
        return QStringLiteral("failed (2, damaged)");
    case CellEnd::OtherSize:
        return QStringLiteral("failed (other size)");
    case CellEnd::Unknown:
        return QStringLiteral("FAILED IN ANOTHER WAY");
    case CellEnd::Trying:
        break;
    }
    return QStringLiteral("tries again");
}

QList<ServerFault> serverFaults(const QByteArray &archive, OtherServers &others)
{
    const int size = archive.size();
    const int third = size / 3;
    const auto noise = [](int size) { return Server::generatedBytes(7, 0, size); };
    QList<ServerFault> faults;
    // Of all four: fresh with the size told, fresh without, resumed with, resumed without.
    const auto add = [&faults](const char *name, const Behaviour &behaviour,
                               const QByteArray &fresh, const QByteArray &freshUntold,
                               const QByteArray &resumed, const QByteArray &resumedUntold) {
        faults.append({QString::fromUtf8(name),
                       behaviour,
                       false,
                       {fresh, freshUntold, resumed, resumedUntold}});
    };
    const auto addSame = [&faults](const char *name, const Behaviour &behaviour,
                                   const QByteArray &ends, bool stalls = false) {
        faults.append({QString::fromUtf8(name), behaviour, stalls, {ends, ends, ends, ends}});
    };

    addSame("no answer", Server::SilentAccept(), "W T", true);
    addSame("stall in the head", Server::StallInHead(30), "W T", true);
    addSame("stall before the body", Server::StallAfter(0), "W T", true);
    addSame("stall in the body", Server::StallAfter(third), "W W", true);
    addSame("head without end", Server::EndlessHead(), "W T", true);

    // A network error drops what had come, unless Qt has asked again before it told of it. An end
    // that comes too early is no error for Qt where nothing told the length.
    addSame("closed without an answer", Server::CloseAtOnce(), "FW F");
    addSame("cut in the head", Server::CutInHead(30), "FW F");
    add("cut before the body", Server::CutAfter(0), "FW F", "FSW FS", "FW F", "FSW FS");
    add("cut in the body", Server::CutAfter(third), "FW FW", "FSW FSW", "FW FW", "FSW FSW");
    add("reset in the body", Server::ResetAfter(third), "FW FW", "FSW FSW", "FW FW", "FSW FSW");
    add("cut in a chunk", Server::ChunkedCut(third), "FW FW", "FSW FSW", "FW FW", "FSW FSW");
    add("10 bytes less than told", Server::ShortBody(10), "FW FW", "SW SW", "FW FW", "SW SW");
    add("100 bytes more than told", Server::ExtraBytes(100), "W W", "S S", "W W", "S S");
    add("a second Content-Length, larger",
        Server::Header("Content-Length", QByteArray::number(size + 100)), "W W", "FW FW", "W W",
        "FW FW");
    addSame("a second Content-Length, negative", Server::Header("Content-Length", "-5"), "W W");
    addSame("no HTTP at all", Server::Garbage(), "FW F");
    add("cut, and refuses connections then", Server::CutAfter(third) | Server::RefuseAfter(), "F F",
        "FS FS", "F F", "FS FS");

    addSame("200, not 206", Server::NoRange(), "W W");
    add("200, not 206, and cut", Server::NoRange() | Server::CutAfter(third), "FW F", "FSW FS",
        "FW F", "FSW FS");
    add("Content-Range 1 byte off", Server::WrongRangeStart(1), "R R", "R R", "W R", "W R");
    add("total 100 too small", Server::WrongRangeTotal(size - 100), "R R", "R R", "W R", "R R");
    add("total 100 too large", Server::WrongRangeTotal(size + 100), "R R", "R R", "W R", "R R");
    addSame("206 without Content-Range", Server::MissingContentRange(), "W W");
    addSame("Content-Range of nonsense", Server::ContentRangeText("bytes of no kind"), "W W");

    // A resume notices by the total that the file is another one, and begins anew.
    addSame("other content, same size", Server::ChangedFile(noise(size)), "D D");
    add("other content, longer", Server::ChangedFile(noise(size + 500)), "S S", "S S", "W S",
        "S S");
    add("other content, shorter", Server::ChangedFile(noise(size - 500)), "S S", "S S", "W S",
        "S S");
    add("other content, very short", Server::ChangedFile(noise(third)), "S S", "S S", "R R", "R R");
    addSame("gzip that was not asked for", Server::GzipUnasked(), "S S");
    addSame("gzip told, plain sent", Server::Header("Content-Encoding", "gzip"), "W W");

    for (const char *status : {"404", "500", "503"})
        addSame(status, Server::Status(QByteArray(status).toInt()), "F F");
    for (const char *status : {"416", "429"})
        addSame(status, Server::Status(QByteArray(status).toInt()), "R R");
    addSame("304", Server::Status(304, QByteArray()), "F F");
    addSame("204", Server::Status(204, QByteArray()), "S S");
    addSame("200 and empty", Server::Status(200, QByteArray()), "S S");
    addSame("200 and a log-in page",
            Server::Status(200, "<html><body>Log in first, please</body></html>\n"), "S S");
    add("302 to a log-in page", Server::Redirect(others.plain.url("/login")), "S S", "S S", "R R",
        "R R");
    addSame("302 in a circle", Server::Redirect(QStringLiteral("FI.zip")), "W F");
    addSame("302 without an address", Server::Status(302), "F F");
    addSame("302 to another server", Server::Redirect(others.plain.url("/FI.zip")), "W W");
    addSame("302 to a server that is gone", Server::Redirect(others.stopped.url("/FI.zip")), "F F");
    addSame("302 to https, unknown certificate", Server::Redirect(others.tls.url("/FI.zip")),
            "F F");
    addSame("302 to a local file", Server::Redirect(QStringLiteral("file:///etc/hostname")), "F F");
    return faults;
}
