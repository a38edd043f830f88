#pragma once

#include <climits>
#include <cstring>
#include <string_view>

namespace plum::starter {

// The name of a file, without memory of the heap. One that is longer than the system takes stays too long, so
// that every call with it fails for that reason.
class Path
{
public:
    explicit Path(std::string_view text) { add(text); }

    const char *text() const { return m_text; }
    char *text() { return m_text; } // for calls that take, or write, a text of the same length

    Path operator/(std::string_view name) const
    {
        Path below = *this;
        below.add("/");
        below.add(name);
        return below;
    }

private:
    void add(std::string_view text)
    {
        const std::size_t room = PATH_MAX - m_length;
        const std::size_t length = text.size() < room ? text.size() : room;
        std::memcpy(m_text + m_length, text.data(), length);
        m_length += length;
        m_text[m_length] = '\0';
    }

    char m_text[PATH_MAX + 1];
    std::size_t m_length = 0;
};

} // namespace plum::starter
