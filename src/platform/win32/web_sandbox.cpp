#include "platform/web_sandbox.h"

namespace plum {

// The sandbox runs under every account here.
void prepareWebSandbox()
{
}

} // namespace plum
