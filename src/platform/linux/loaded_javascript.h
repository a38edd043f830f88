#pragma once

#include "platform/javascript.h"

#include <memory>

namespace plum {

// The JavaScript of the module `plum-js`, which is loaded with the first evaluation. Without the module every
// evaluation fails.
class LoadedJavaScript final : public JavaScript
{
public:
    Result evaluate(const QString &program) override;
    void giveUp() override
    {
        if (m_javaScript)
            m_javaScript->giveUp();
    }

private:
    std::unique_ptr<JavaScript> m_javaScript;
};

} // namespace plum
