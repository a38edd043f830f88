#pragma once

#include "library/app_lists.h"

namespace plum {

class Paths;
class TextCodec;

// What a user may set beyond the hotkey: `config\load\options.ini`, which Plum reads and never writes.
struct LauncherOptions
{
    ListOrder order = ListOrder::Saved; // [list] order=recent
};

// What is not there, or is no word that means something, stays as it is without the file.
LauncherOptions readLauncherOptions(const Paths &paths, TextCodec &codec);

// [recorder] pictures=on: what is kept of a run has pictures. Asked for with each run.
bool wantsPictures(const Paths &paths, TextCodec &codec);

} // namespace plum
