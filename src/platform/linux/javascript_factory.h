#pragma once

#include <QtPlugin>

#include <memory>

namespace plum {

class JavaScript;

// What the module `plum-js` exports.
class JavaScriptFactory
{
public:
    virtual ~JavaScriptFactory() = default;

    virtual std::unique_ptr<JavaScript> createJavaScript() = 0;
};

} // namespace plum

Q_DECLARE_INTERFACE(plum::JavaScriptFactory, "plum.JavaScriptFactory/1")
