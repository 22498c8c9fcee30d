#pragma once

#include <QSslConfiguration>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

#include <functional>
#include <memory>

namespace stackreel
{

/// An HTTP server on a loopback address that answers each request as it is told, however badly. It runs on
/// the event loop of the test.
class LoopbackServer
{
public:
    /// Answers one request for a path; the connection is its own to write to and to close.
    using Answer = std::function<void(QTcpSocket& connection, const QByteArray& path)>;

    explicit LoopbackServer(Answer answer);
    /// The same over TLS, as a configuration with key and certificate says.
    LoopbackServer(const QSslConfiguration& tls, Answer answer);

    void setAnswer(Answer answer) { m_answer = std::move(answer); }
    QUrl url(const QByteArray& path = "/feed") const;
    /// The paths asked for, in order, and what was sent along with the last one.
    const QByteArrayList& paths() const { return m_paths; }
    const QByteArray& lastRequest() const { return m_lastRequest; }

private:
    LoopbackServer(std::unique_ptr<QTcpServer> server, const char* scheme, Answer answer);
    void accept();

    Answer m_answer;
    QByteArrayList m_paths;
    QByteArray m_lastRequest;
    QString m_scheme;
    std::unique_ptr<QTcpServer> m_server;
};

/// Answers: a document with an honest length; the given bytes and then the end; the bytes again and again.
LoopbackServer::Answer sendDocument(QByteArray document);
LoopbackServer::Answer sendAndClose(QByteArray bytes);
LoopbackServer::Answer sendForever(QByteArray start, QByteArray bytes, qint64* sent = nullptr);
/// One byte now and then after the start.
LoopbackServer::Answer drip(QByteArray start);
/// Sends the client to another address, with a body.
LoopbackServer::Answer redirectTo(QByteArray location);
/// Takes the request and says nothing.
LoopbackServer::Answer sayNothing();

} // namespace stackreel
