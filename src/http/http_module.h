#pragma once

#include <QtPlugin>

#include <memory>

namespace plum {

class HttpClient;

// What the module `plum-http` exports.
class HttpModule
{
public:
    virtual ~HttpModule() = default;

    virtual std::unique_ptr<HttpClient> createClient() = 0;
};

} // namespace plum

Q_DECLARE_INTERFACE(plum::HttpModule, "plum.HttpModule/1")
