#pragma once

#include <QString>

namespace plum {

class HttpClient;
class Paths;
class TextCodec;

// Posts one file as a form. It remembers the last answer: an upload that fails answers with the one before
// it. Kept: scripts test whether the answer is new.
class FileUpload
{
public:
    FileUpload(HttpClient &http, Paths &paths, TextCodec &codec)
        : m_http(http)
        , m_paths(paths)
        , m_codec(codec)
    {
    }

    // The server's answer as text, whatever its status.
    QString UploadFile(
        const QString &url, const QString &filePath, const QString &contentType, const QString &fieldName);

    // What the last upload failed at, as a sentence for people; empty when the server answered.
    const QString &problem() const { return m_problem; }

    // Every problem so far, each after a CR LF. Nothing shows or clears them.
    const QString &errors() const { return m_errors; }

private:
    // Whether a request can be sent; what is wrong is added to the errors.
    bool check(const QString &filePath);

    HttpClient &m_http;
    Paths &m_paths;
    TextCodec &m_codec;
    QString m_lastResponse;
    QString m_errors;
    QString m_problem;
};

} // namespace plum
