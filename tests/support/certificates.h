#pragma once

#include "support/temporary_files.h"

#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>

namespace plum::test {

// Makes the test's certificate a trusted one, for this object's life.
class Trust
{
public:
    explicit Trust(const QString &certificateFile)
    {
        QSslConfiguration trusting = m_before;
        trusting.setCaCertificates(QSslCertificate::fromPath(certificateFile));
        QSslConfiguration::setDefaultConfiguration(trusting);
    }
    ~Trust() { QSslConfiguration::setDefaultConfiguration(m_before); }
    Q_DISABLE_COPY_MOVE(Trust)

private:
    QSslConfiguration m_before = QSslConfiguration::defaultConfiguration();
};

// A certificate for 127.0.0.1 that nobody has signed but itself: its file and that of its key.
inline QStringList selfSignedCertificate(const TemporaryFiles &files)
{
    const QStringList paths{
        files.folder() + QStringLiteral("/cert.pem"), files.folder() + QStringLiteral("/key.pem")};
    QProcess openssl;
    openssl.start(QStringLiteral("openssl"),
        {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
            QStringLiteral("rsa:2048"), QStringLiteral("-nodes"), QStringLiteral("-days"),
            QStringLiteral("2"), QStringLiteral("-subj"), QStringLiteral("/CN=127.0.0.1"),
            QStringLiteral("-addext"), QStringLiteral("subjectAltName=IP:127.0.0.1"), QStringLiteral("-out"),
            paths[0], QStringLiteral("-keyout"), paths[1]});
    openssl.waitForFinished();
    return paths;
}

} // namespace plum::test
