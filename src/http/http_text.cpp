#include "http/http_text.h"

#include "engine/editions/reason.h"
#include "http/http_client.h"
#include "http/text_detection.h"
#include "platform/text_codec.h"

#include <QRegularExpression>
#include <QStringDecoder>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int statusOk = 200;

// The name of the encoding in a Content-Type such as `text/html; charset="GBK"`; empty without one.
QString charsetOf(const QByteArray &contentType)
{
    static const QRegularExpression parameter(
        uR"(;\s*charset\s*=\s*["']?([^\s"';]+))"_s, QRegularExpression::CaseInsensitiveOption);
    return parameter.match(QString::fromLatin1(contentType)).captured(1).toLower();
}

bool isChinese(const QString &charset)
{
    return charset == "gb2312"_L1 || charset == "gbk"_L1 || charset == "x-gbk"_L1 || charset == "cp936"_L1;
}

} // namespace

QString HttpGetText(HttpClient &client, TextCodec &codec, const QString &url)
{
    return fetchText(client, codec, url).text;
}

FetchedText fetchText(HttpClient &client, TextCodec &codec, const QString &url)
{
    const HttpReply reply = client.get(url);
    if (reply.status == 0)
        return {{}, Reason::tr("nothing answers at %1").arg(url)};
    if (reply.status != statusOk)
        return {{}, Reason::tr("%1 answers with status %2").arg(url).arg(reply.status)};
    return {BytesToText(reply.body, codec), {}};
}

QString responseText(const HttpReply &reply, TextCodec &codec)
{
    const auto marked = QStringDecoder::encodingForData(reply.body);
    const QString charset = charsetOf(reply.contentType);
    if (!marked && charset.isEmpty())
        return codec.fromUtf8(reply.body);
    if (!marked && isChinese(charset))
        return codec.fromGb2312(reply.body);
    QStringDecoder decoder
        = marked ? QStringDecoder(*marked) : QStringDecoder(charset.toLatin1().constData());
    return decoder.isValid() ? QString(decoder(reply.body)) : codec.fromUtf8(reply.body);
}

QString FileNameFromUrl(QString &url)
{
    url.replace(u'\\', u'/');
    return url.sliced(url.lastIndexOf(u'/') + 1);
}

} // namespace plum
