#pragma once

namespace plum {

// Prepares the environment of a web engine that is about to be loaded into this process: its sandbox refuses
// to run as the system's administrator, where it is switched off, and nowhere else.
void prepareWebSandbox();

} // namespace plum
