#pragma once

#include <QFile>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>

namespace stackreel
{

inline QByteArray tlsFile(const char* name)
{
    QFile file(QStringLiteral(STACKREEL_TLS_FIXTURES "/") + QString::fromLatin1(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline QSslCertificate tlsCertificate(const char* name)
{
    return QSslCertificate(tlsFile(name));
}

/// The configuration of a server with a certificate from the folder `tls`.
inline QSslConfiguration tlsServerOf(const char* certificate)
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setPrivateKey(QSslKey(tlsFile("key.pem"), QSsl::Ec));
    configuration.setLocalCertificate(tlsCertificate(certificate));
    return configuration;
}

/// Makes this process trust a certificate during the lifetime of the object.
class TrustedCertificate
{
public:
    explicit TrustedCertificate(const char* name)
    {
        QSslConfiguration configuration = m_before;
        configuration.addCaCertificate(tlsCertificate(name));
        QSslConfiguration::setDefaultConfiguration(configuration);
    }
    ~TrustedCertificate() { QSslConfiguration::setDefaultConfiguration(m_before); }
    TrustedCertificate(const TrustedCertificate&) = delete;
    TrustedCertificate& operator=(const TrustedCertificate&) = delete;

private:
    const QSslConfiguration m_before = QSslConfiguration::defaultConfiguration();
};

} // namespace stackreel
