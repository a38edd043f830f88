#pragma once

#include <optional>
#include <utility>

namespace plum {

// A part that is made when it is first asked for.
template <typename Part> class Lazy
{
public:
    template <typename... Arguments> Part &get(Arguments &&...arguments)
    {
        if (!m_part)
            m_part.emplace(std::forward<Arguments>(arguments)...);
        return *m_part;
    }

    Part *ifMade() { return m_part ? &*m_part : nullptr; }

private:
    std::optional<Part> m_part;
};

} // namespace plum
