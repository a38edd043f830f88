#pragma once

#include <QtPlugin>

#include <memory>

namespace plum {

class HttpClient;

// What the module `plum-http` exports.
class HttpClientFactory
{
public:
    virtual ~HttpClientFactory() = default;

    virtual std::unique_ptr<HttpClient> createClient() = 0;
};

} // namespace plum

Q_DECLARE_INTERFACE(plum::HttpClientFactory, "plum.HttpClientFactory/1")
