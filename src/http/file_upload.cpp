#include "http/file_upload.h"

#include "engine/editions/reason.h"
#include "http/http_client.h"
#include "http/http_text.h"
#include "http/multipart_body.h"
#include "platform/paths.h"

#include <QFileInfo>
#include <QIODevice>

namespace plum {

using namespace Qt::StringLiterals;

bool FileUpload::check(const QString &filePath)
{
    QString problem;
    const QString file = m_paths.toSystem(filePath);
    if (!m_paths.mayRead(file) || !QFileInfo(file).isFile())
        problem = u"文件不存在.."_s; // the file does not exist
    else
        problem = m_http.unavailable();
    if (!problem.isEmpty())
        m_errors += u"\r\n"_s + problem;
    return problem.isEmpty();
}

QString FileUpload::UploadFile(
    const QString &url, const QString &filePath, const QString &contentType, const QString &fieldName)
{
    const QString boundary = MakeBoundary();
    m_problem = Reason::tr("%1 cannot be read").arg(filePath);
    if (!check(filePath))
        return m_lastResponse;
    std::unique_ptr<QIODevice> file = ReadFileBytes(m_paths.toSystem(filePath));
    if (!file)
        return m_lastResponse;

    const auto body = BuildMultipartBody(
        std::move(file), boundary, PartHeader(fieldName, filePath, contentType), m_codec);
    const HttpReply reply
        = m_http.post(url, TextToBytes(u"multipart/form-data; boundary="_s + boundary, m_codec), *body);
    if (reply.status == 0) {
        m_problem = Reason::tr("nothing answers at %1").arg(url);
    } else {
        m_problem.clear();
        m_lastResponse = responseText(reply, m_codec);
    }
    return m_lastResponse;
}

} // namespace plum
