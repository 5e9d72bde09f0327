// SPDX-License-Identifier: MIT
#include "testutils/httptestplan.h"

#include <cstring>
#include <QtEndian>

using Behaviour = HttpTestServer::Behaviour;
using Plan = HttpTestPlan;

namespace {

void close(Plan &plan)
{
    if (plan.ending == Plan::Ending::KeepAlive)
        plan.ending = Plan::Ending::Close;
}

Behaviour contentRange(Plan::ContentRange kind, qint64 number = 0)
{
    return Behaviour([=](Plan &plan) {
        plan.contentRange = kind;
        plan.contentRangeNumber = number;
    });
}

// One step of a well-mixed sequence: any block can be made without the ones before it.
quint64 mixed(quint64 x)
{
    x += 0x9e3779b97f4a7c15ULL;
    x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9ULL;
    x = (x ^ (x >> 27)) * 0x94d049bb133111ebULL;
    return x ^ (x >> 31);
}

} // namespace

HttpTestServer::Content::Content(const QByteArray &bytes)
    : m_bytes(bytes)
    , m_size(bytes.size())
{ }

HttpTestServer::Content HttpTestServer::Content::generated(quint32 seed, qint64 size)
{
    Content content;
    content.m_seed = seed;
    content.m_size = size;
    content.m_generated = true;
    return content;
}

QByteArray HttpTestServer::Content::mid(qint64 offset, qint64 length) const
{
    length = qMax<qint64>(0, qMin(length, m_size - offset));
    return m_generated ? generatedBytes(m_seed, offset, length)
                       : m_bytes.mid(int(offset), int(length));
}

QByteArray HttpTestServer::generatedBytes(quint32 seed, qint64 offset, qint64 length)
{
    QByteArray bytes(int(length), Qt::Uninitialized);
    for (qint64 done = 0; done < length;) {
        const qint64 at = offset + done;
        const quint64 block = qToLittleEndian(mixed((quint64(seed) << 40) ^ quint64(at / 8)));
        const qint64 skip = at % 8;
        const qint64 count = qMin(8 - skip, length - done);
        std::memcpy(bytes.data() + done, reinterpret_cast<const char *>(&block) + skip,
                    size_t(count));
        done += count;
    }
    return bytes;
}

Behaviour Behaviour::operator|(const Behaviour &other) const
{
    Behaviour both = *this;
    both.m_steps.insert(both.m_steps.end(), other.m_steps.begin(), other.m_steps.end());
    return both;
}

void Behaviour::apply(Plan &plan) const
{
    for (const auto &step : m_steps)
        step(plan);
}

Behaviour HttpTestServer::Whole()
{
    return Behaviour();
}

Behaviour HttpTestServer::NoRange()
{
    return Behaviour([](Plan &plan) { plan.ranges = false; });
}

Behaviour HttpTestServer::CutAfter(qint64 bytes)
{
    return Behaviour([=](Plan &plan) {
        plan.cutAfter = bytes;
        close(plan);
    });
}

Behaviour HttpTestServer::ResetAfter(qint64 bytes)
{
    return Behaviour([=](Plan &plan) {
        plan.cutAfter = bytes;
        plan.ending = Plan::Ending::Reset;
    });
}

Behaviour HttpTestServer::StallAfter(qint64 bytes)
{
    return Behaviour([=](Plan &plan) { plan.stallAfter = bytes; });
}

Behaviour HttpTestServer::Drip(qint64 bytes, int intervalMs)
{
    return Behaviour([=](Plan &plan) {
        plan.dripBytes = bytes;
        plan.dripMs = intervalMs;
    });
}

Behaviour HttpTestServer::ShortBody(qint64 missing)
{
    return Behaviour([=](Plan &plan) {
        plan.missing = missing;
        close(plan);
    });
}

Behaviour HttpTestServer::ExtraBytes(qint64 surplus)
{
    return Behaviour([=](Plan &plan) {
        plan.surplus = surplus;
        close(plan);
    });
}

Behaviour HttpTestServer::NoContentLength()
{
    return Behaviour([](Plan &plan) {
        plan.contentLength = false;
        close(plan);
    });
}

Behaviour HttpTestServer::Chunked()
{
    return Behaviour([](Plan &plan) { plan.chunked = true; });
}

Behaviour HttpTestServer::ChunkedCut(qint64 bytes)
{
    return Chunked() | CutAfter(bytes);
}

Behaviour HttpTestServer::WrongRangeStart(qint64 offset)
{
    return contentRange(Plan::ContentRange::WrongStart, offset);
}

Behaviour HttpTestServer::WrongRangeTotal(qint64 total)
{
    return contentRange(Plan::ContentRange::WrongTotal, total);
}

Behaviour HttpTestServer::UnknownRangeTotal()
{
    return contentRange(Plan::ContentRange::UnknownTotal);
}

Behaviour HttpTestServer::MissingContentRange()
{
    return contentRange(Plan::ContentRange::Missing);
}

Behaviour HttpTestServer::ContentRangeText(const QByteArray &value)
{
    return Behaviour([=](Plan &plan) {
        plan.contentRange = Plan::ContentRange::Text;
        plan.contentRangeText = value;
    });
}

Behaviour HttpTestServer::Status(int code, const QByteArray &body)
{
    return Behaviour([=](Plan &plan) {
        plan.status = code;
        plan.content = Content(body);
    });
}

Behaviour HttpTestServer::ErrorThenClose(int code, int bodyDelayMs, int closeDelayMs)
{
    return Status(code) | NoContentLength() | Behaviour([=](Plan &plan) {
               plan.bodyDelayMs = bodyDelayMs;
               plan.closeDelayMs = closeDelayMs;
           });
}

Behaviour HttpTestServer::Redirect(const QString &url, int code)
{
    return Status(code) | Header("Location", url.toUtf8());
}

Behaviour HttpTestServer::Gzip()
{
    return Behaviour([](Plan &plan) { plan.gzip = true; });
}

Behaviour HttpTestServer::GzipUnasked()
{
    return Behaviour([](Plan &plan) { plan.gzipAlways = true; });
}

Behaviour HttpTestServer::StallInHead(qint64 bytes)
{
    return Behaviour([=](Plan &plan) { plan.headLimit = bytes; });
}

Behaviour HttpTestServer::CutInHead(qint64 bytes)
{
    return Behaviour([=](Plan &plan) {
        plan.headLimit = bytes;
        plan.headCut = true;
    });
}

Behaviour HttpTestServer::EndlessHead()
{
    return Behaviour([](Plan &plan) { plan.endlessHead = true; });
}

Behaviour HttpTestServer::SilentAccept()
{
    return Behaviour([](Plan &plan) { plan.silent = true; });
}

Behaviour HttpTestServer::Garbage()
{
    return Behaviour([](Plan &plan) {
        plan.garbage = QByteArray("\x01\x02\xff this is not HTTP\r\n\r\n garbage");
    });
}

Behaviour HttpTestServer::CloseAtOnce()
{
    return Behaviour([](Plan &plan) { plan.noAnswer = true; });
}

Behaviour HttpTestServer::ChangedFile(const Content &content)
{
    return Behaviour([=](Plan &plan) { plan.content = content; });
}

Behaviour HttpTestServer::DelayBeforeAnswer(int ms)
{
    return Behaviour([=](Plan &plan) { plan.answerDelayMs = ms; });
}

Behaviour HttpTestServer::DelayBeforeBody(int ms)
{
    return Behaviour([=](Plan &plan) { plan.bodyDelayMs = ms; });
}

Behaviour HttpTestServer::Header(const QByteArray &name, const QByteArray &value)
{
    return Behaviour([=](Plan &plan) { plan.headers.append(HttpHeader {name, value}); });
}

Behaviour HttpTestServer::RefuseAfter()
{
    return Behaviour([](Plan &plan) {
        plan.stopListening = true;
        close(plan);
    });
}
