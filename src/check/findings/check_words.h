#pragma once

#include <QCoreApplication>

namespace plum {

// The checker's sentences, in the language of the session: in the launcher's editor a person reads them.
// Where programs read them, as behind `plumkit check`, no translation is loaded, and they are English.
class CheckWords
{
    Q_DECLARE_TR_FUNCTIONS(plum::CheckWords)
};

} // namespace plum
