#pragma once

#include <QString>

namespace plum {

class HttpClient;
class TextCodec;
struct HttpReply;

// The page at `url` as text: UTF-8 or GB2312, whichever its bytes look like; what the server says about the
// encoding does not count. Empty when the answer's status is not 200, or when there is no answer.
QString HttpGetText(HttpClient &client, TextCodec &codec, const QString &url);

struct FetchedText
{
    QString text;
    QString problem; // why there is none, as a sentence for people; empty when the status was 200
};

// As above, with the reason for an empty text.
FetchedText fetchText(HttpClient &client, TextCodec &codec, const QString &url);

// An answer as text, in the encoding that its Content-Type names or its byte-order mark shows; else UTF-8.
QString responseText(const HttpReply &reply, TextCodec &codec);

// The text after the last "/" of `url`. Every "\" of the caller's `url` becomes "/" first.
QString FileNameFromUrl(QString &url);

} // namespace plum
