// An answer taken apart at once, byte by byte and with its connection ended: always the same body, never more
// of it than arrived.

#include "transport/http_answer.h"

#include <cstdint>
#include <cstdlib>

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    plum::HttpAnswer whole;
    QByteArray wholeBody;
    whole.take(bytes, wholeBody);
    plum::HttpAnswer slow;
    QByteArray slowBody;
    for (qsizetype i = 0; i < bytes.size(); ++i)
        slow.take(bytes.sliced(i, 1), slowBody);
    require(whole.state() == slow.state());
    require(wholeBody == slowBody);
    require(wholeBody.size() <= bytes.size());
    require(whole.status() == slow.status() && whole.length() == slow.length());
    whole.end();
    using State = plum::HttpAnswer::State;
    require(
        whole.state() == State::Complete || whole.state() == State::Cut || whole.state() == State::NotHttp);
    return 0;
}
