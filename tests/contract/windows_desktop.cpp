#include "contract/real_desktop.h"

namespace plum::contract {

namespace {

// The desktop on which the tests were started, Wine's or Windows' own.
class WindowsDesktop final : public RealDesktop
{
public:
    const char *name() const override { return "Windows"; }
    bool prepare() override { return true; }
    std::span<const Exception> exceptions() const override { return {}; }
};

} // namespace

std::unique_ptr<Desktop> Desktop::create()
{
    return std::make_unique<WindowsDesktop>();
}

} // namespace plum::contract
