#pragma once

namespace plum {

// What the windows of a program on an X server cost before they can be made, done before there is an
// application object: this thread reads the font configuration, while another one loads the libraries of the
// ways to the server. Nobody waits for that one but the end of the process: who needs such a library loads
// it, or finds it there. To be called once.
void workAhead();

} // namespace plum
