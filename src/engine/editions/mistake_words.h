#pragma once

#include <QCoreApplication>

namespace plum {

// The sentences on mistakes in scripts, in the language of the session: a script's author reads them.
class MistakeWords
{
    Q_DECLARE_TR_FUNCTIONS(plum::MistakeWords)
};

} // namespace plum
