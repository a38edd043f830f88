#include "transport/http_answer.h"

#include <algorithm>

namespace plum {

namespace {

constexpr qsizetype longestChunkLine = 4096; // bytes, extensions included

constexpr int noContent = 204;
constexpr int notModified = 304;
constexpr int switchingProtocols = 101;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Nothing when it is no plain number, or several that differ.
std::optional<qint64> lengthIn(const QByteArray &value)
{
    std::optional<qint64> length;
    for (const QByteArray &part : value.split(',')) {
        const QByteArray digits = part.trimmed();
        bool isNumber = false;
        const qint64 number = digits.toLongLong(&isNumber);
        if (!isNumber || !isDigit(digits.front()) || (length && *length != number))
            return std::nullopt;
        length = number;
    }
    return length;
}

} // namespace

void HttpAnswer::take(const QByteArray &bytes, QByteArray &body)
{
    QByteArrayView rest(bytes);
    while (!rest.isEmpty() && (m_state == State::Head || m_state == State::Body)) {
        const bool isBody = isCounted() || m_step == Step::UntilEnd;
        rest = rest.sliced(isBody ? takeBody(bytes, rest, body) : takeLine(rest));
    }
}

void HttpAnswer::end()
{
    if (m_step == Step::UntilEnd)
        m_state = State::Complete;
    else if (m_state == State::Head || m_state == State::Body)
        m_state = State::Cut;
}

// How many of the bytes belong to the line in hand.
qsizetype HttpAnswer::takeLine(QByteArrayView bytes)
{
    const qsizetype lineEnd = bytes.indexOf('\n');
    const qsizetype taken = lineEnd < 0 ? bytes.size() : lineEnd + 1;
    if (isInHead())
        m_headSize += taken;
    if (m_headSize > largestHead || (!isInHead() && m_line.size() + taken > longestChunkLine)) {
        m_state = State::NotHttp;
        return taken;
    }
    m_line.append(bytes.first(taken));
    if (lineEnd >= 0) {
        QByteArrayView line = QByteArrayView(m_line).chopped(1);
        if (line.endsWith('\r'))
            line = line.chopped(1);
        useLine(line);
        m_line.clear();
    }
    return taken;
}

void HttpAnswer::useLine(QByteArrayView line)
{
    switch (m_step) {
    case Step::StatusLine:
        return readStatus(line);
    case Step::Fields:
        return line.isEmpty() ? endHead() : readField(line);
    case Step::ChunkSize:
        return readChunkSize(line);
    case Step::ChunkEnd:
        if (!line.isEmpty())
            m_state = State::NotHttp;
        m_step = Step::ChunkSize;
        return;
    case Step::Counted:
    case Step::Chunk:
    case Step::UntilEnd:
        return;
    }
}

void HttpAnswer::readStatus(QByteArrayView line)
{
    if (line.isEmpty())
        return; // some servers send one too many after the answer before
    const qsizetype blank = line.indexOf(' ');
    const QByteArrayView rest = blank < 0 ? QByteArrayView() : line.sliced(blank + 1);
    const QByteArrayView code = rest.first(std::min<qsizetype>(rest.size(), 3));
    const bool isCode = code.size() == 3 && std::ranges::all_of(code, isDigit) && code.front() != '0';
    if (!line.startsWith("HTTP/") || !isCode) {
        m_state = State::NotHttp;
        return;
    }
    m_status = code.toInt();
    m_fields.clear();
    m_step = Step::Fields;
}

void HttpAnswer::readField(QByteArrayView line)
{
    if (line.front() == ' ' || line.front() == '\t') {
        if (!m_fields.isEmpty()) // a value that goes on in the next line
            m_fields.last().second += ' ' + line.trimmed().toByteArray();
        return;
    }
    if (const qsizetype colon = line.indexOf(':'); colon > 0)
        m_fields.emplace_back(
            line.first(colon).trimmed().toByteArray(), line.sliced(colon + 1).trimmed().toByteArray());
}

void HttpAnswer::endHead()
{
    if (m_status < 200) {
        m_step = Step::StatusLine; // an interim answer; the one that counts follows
        if (m_status == switchingProtocols)
            m_state = State::NotHttp;
        m_status = 0;
        return;
    }
    m_hasHead = true;
    m_state = State::Body;
    const QByteArray coding = header("Transfer-Encoding").toLower();
    if (m_status == noContent || m_status == notModified) {
        m_state = State::Complete;
    } else if (coding == "chunked") {
        m_step = Step::ChunkSize;
    } else if (!coding.isEmpty() && coding != "identity") {
        m_state = State::NotHttp;
    } else if (m_length = lengthIn(header("Content-Length")); m_length) {
        m_step = Step::Counted;
        m_left = *m_length;
        if (m_left == 0)
            m_state = State::Complete;
    } else {
        m_step = Step::UntilEnd;
    }
}

void HttpAnswer::readChunkSize(QByteArrayView line)
{
    constexpr qsizetype mostDigits = 15; // so that no number overflows
    const qsizetype semicolon = line.indexOf(';');
    const QByteArray digits = (semicolon < 0 ? line : line.first(semicolon)).trimmed().toByteArray();
    bool isNumber = false;
    m_left = digits.toLongLong(&isNumber, 16);
    if (!isNumber || m_left < 0 || digits.size() > mostDigits || digits.contains('x') || digits.contains('X'))
        m_state = State::NotHttp;
    else if (m_left == 0)
        m_state = State::Complete; // what may follow are fields that nobody here reads
    else
        m_step = Step::Chunk;
}

// How many of the bytes belong to the body. A body that is all there is to `all` shares its bytes.
qsizetype HttpAnswer::takeBody(const QByteArray &all, QByteArrayView bytes, QByteArray &body)
{
    const auto taken
        = isCounted() ? static_cast<qsizetype>(std::min<qint64>(m_left, bytes.size())) : bytes.size();
    if (body.isEmpty() && taken == all.size())
        body = all;
    else
        body.append(bytes.first(taken));
    if (!isCounted())
        return taken;
    m_left -= taken;
    if (m_left == 0 && m_step == Step::Chunk)
        m_step = Step::ChunkEnd;
    else if (m_left == 0)
        m_state = State::Complete;
    return taken;
}

QByteArray HttpAnswer::header(QByteArrayView name) const
{
    QByteArray values;
    for (const auto &[fieldName, value] : m_fields) {
        if (name.compare(fieldName, Qt::CaseInsensitive) != 0)
            continue;
        if (!values.isEmpty())
            values += ", ";
        values += value;
    }
    return values;
}

} // namespace plum
