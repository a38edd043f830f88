#pragma once

#include <functional>

namespace plum {

// Waits until `condition` holds, the event loop running meanwhile, and returns whether it did within
// test::patience: long enough for a machine that is busy with something else.
bool eventually(const std::function<bool()> &condition);

// Gives the answer to a dialog that takes none before it could be seen, and waits until the dialog is gone.
// The answer is given once, and again only when it cannot be on its way any more: a second one would meet
// whatever comes behind the dialog.
bool answersWhenRipe(const std::function<bool()> &isAsked, const std::function<void()> &answer);

} // namespace plum
