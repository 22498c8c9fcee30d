#include "tests/updates/LoopbackServer.h"

#include <QNetworkProxy>
#include <QSslServer>
#include <QTimer>

namespace stackreel
{

namespace
{

std::unique_ptr<QTcpServer> tlsServer(const QSslConfiguration& tls)
{
    auto server = std::make_unique<QSslServer>();
    server->setSslConfiguration(tls);
    return server;
}

} // namespace

LoopbackServer::LoopbackServer(Responder responder)
    : LoopbackServer(std::make_unique<QTcpServer>(), "http", std::move(responder))
{
}

LoopbackServer::LoopbackServer(const QSslConfiguration& tls, Responder responder)
    : LoopbackServer(tlsServer(tls), "https", std::move(responder))
{
}

LoopbackServer::LoopbackServer(std::unique_ptr<QTcpServer> server, const char* scheme, Responder responder)
    : m_responder(std::move(responder)), m_scheme(QString::fromLatin1(scheme)), m_server(std::move(server))
{
    // Ignore the application proxy that a test may have set.
    m_server->setProxy(QNetworkProxy::NoProxy);
    QObject::connect(m_server.get(), &QTcpServer::pendingConnectionAvailable, m_server.get(),
                     [this] { accept(); });
    if (!m_server->listen(QHostAddress::LocalHost))
        throw std::runtime_error("no port to listen on");
}

QUrl LoopbackServer::url(const QByteArray& path) const
{
    QUrl url(
        QStringLiteral("http://127.0.0.1:%1%2").arg(m_server->serverPort()).arg(QString::fromLatin1(path)));
    url.setScheme(m_scheme);
    return url;
}

void LoopbackServer::accept()
{
    QTcpSocket* const connection = m_server->nextPendingConnection();
    QObject::connect(connection, &QTcpSocket::disconnected, connection, &QObject::deleteLater);
    QObject::connect(connection, &QTcpSocket::readyRead, connection,
                     [this, connection, request = QByteArray()]() mutable {
                         request += connection->readAll();
                         if (!request.endsWith("\r\n\r\n"))
                             return;
                         m_lastRequest = std::exchange(request, {});
                         m_paths.append(m_lastRequest.split(' ').value(1));
                         m_responder(*connection, m_paths.last());
                     });
}

LoopbackServer::Responder sendDocument(QByteArray document)
{
    return [document](QTcpSocket& connection, const QByteArray&) {
        connection.write("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(document.size()) +
                         "\r\n\r\n" + document);
    };
}

LoopbackServer::Responder sendAndClose(QByteArray bytes)
{
    return [bytes](QTcpSocket& connection, const QByteArray&) {
        connection.write(bytes);
        connection.disconnectFromHost();
    };
}

LoopbackServer::Responder sendForever(QByteArray start, QByteArray bytes, qint64* sent)
{
    return [start, bytes, sent](QTcpSocket& connection, const QByteArray&) {
        QObject::connect(&connection, &QTcpSocket::bytesWritten, &connection,
                         [&connection, bytes, sent](qint64 count) {
                             if (sent)
                                 *sent += count;
                             if (connection.bytesToWrite() < bytes.size())
                                 connection.write(bytes);
                         });
        connection.write(start + bytes);
    };
}

LoopbackServer::Responder sendSlowly(QByteArray start)
{
    return [start](QTcpSocket& connection, const QByteArray&) {
        auto* const timer = new QTimer(&connection);
        QObject::connect(timer, &QTimer::timeout, &connection, [&connection] { connection.write("x"); });
        timer->start(5);
        connection.write(start);
    };
}

LoopbackServer::Responder redirectTo(QByteArray location)
{
    return sendAndClose("HTTP/1.1 302 Found\r\nLocation: " + location +
                        "\r\nContent-Length: 5\r\nConnection: close\r\n\r\nmoved");
}

LoopbackServer::Responder sendNothing()
{
    return [](QTcpSocket&, const QByteArray&) {};
}

} // namespace stackreel
