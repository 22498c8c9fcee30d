#pragma once

#include <QSslConfiguration>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

#include <functional>
#include <memory>

namespace stackreel
{

/// An HTTP server on a loopback address. The test provides a function that writes the responses, valid or
/// not. The server runs in the event loop of the test.
class LoopbackServer
{
public:
    /// Responds to one request for a path. May write to the connection and close it.
    using Responder = std::function<void(QTcpSocket& connection, const QByteArray& path)>;

    explicit LoopbackServer(Responder responder);
    /// A server that uses TLS. The configuration contains the key and the certificate.
    LoopbackServer(const QSslConfiguration& tls, Responder responder);

    void setResponder(Responder responder) { m_responder = std::move(responder); }
    QUrl url(const QByteArray& path = "/feed") const;
    /// The requested paths in order, and the whole text of the last request.
    const QByteArrayList& paths() const { return m_paths; }
    const QByteArray& lastRequest() const { return m_lastRequest; }

private:
    LoopbackServer(std::unique_ptr<QTcpServer> server, const char* scheme, Responder responder);
    void accept();

    Responder m_responder;
    QByteArrayList m_paths;
    QByteArray m_lastRequest;
    QString m_scheme;
    std::unique_ptr<QTcpServer> m_server;
};

/// Sends a document with status 200 and a Content-Length header.
LoopbackServer::Responder sendDocument(QByteArray document);
/// Sends the bytes, then closes the connection.
LoopbackServer::Responder sendAndClose(QByteArray bytes);
/// Sends `start`, then `bytes` again and again. Adds the number of bytes that were sent to `sent`.
LoopbackServer::Responder sendForever(QByteArray start, QByteArray bytes, qint64* sent = nullptr);
/// Sends `start`, then one byte every few milliseconds.
LoopbackServer::Responder sendSlowly(QByteArray start);
/// Redirects to another address. The response has a body.
LoopbackServer::Responder redirectTo(QByteArray location);
/// Accepts the request and never responds.
LoopbackServer::Responder sendNothing();

} // namespace stackreel
