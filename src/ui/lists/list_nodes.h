#pragma once

namespace plum {

// What assistive technology is told of an app list: a row has the app's keyword and guide, and can be run and
// edited from there. Needs no call for a `KeywordList`.
void describeLists();

} // namespace plum
