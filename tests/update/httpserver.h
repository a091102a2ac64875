#pragma once

#include "tests/shorthand.h"

#include <QMap>
#include <QStringList>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <QUrl>

/// A web server on the loopback address. Tests choose its answer for each path, valid or not.
class HttpServer : public QTcpServer
{
public:
    /// How the client knows the end of the body.
    enum class End { Length, Chunks, Connection };

    struct Answer
    {
        QByteArray body;
        QByteArray status = "200 OK";
        QByteArray location = QByteArray(); ///< target of a redirect
        int announced = -1;                 ///< Content-Length; -1 for the real length
        int chunk = 1 << 30;                ///< bytes that are sent at a time
        int pause = 0;                      ///< milliseconds between them
        int sent = 1 << 30;                 ///< bytes of the body that are sent at all
        bool stalls = false;                ///< whether the connection then stays open
        End end = End::Length;
    };

    HttpServer()
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket *socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { answer(socket); });
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        });
    }

    QMap<QString, Answer> answers; ///< by path
    QStringList asked;             ///< requested paths

    QString address(const QString &path) const
    {
        return "http://127.0.0.1:%1%2"_s.arg(serverPort()).arg(path);
    }

private:
    void answer(QTcpSocket *socket)
    {
        const QByteArray line = socket->readAll().split('\r').first();
        const QString path = QString::fromLatin1(line.split(' ').value(1));
        if (path.isEmpty()) return;
        asked += path;
        const Answer answer = answers.value(path, {"gone", "404 Not Found"});
        const int length = answer.announced < 0 ? answer.body.size() : answer.announced;
        const QByteArray ends[] = {
            "\r\nContent-Length: " + QByteArray::number(length), "\r\nTransfer-Encoding: chunked",
            ""};
        socket->write(
            "HTTP/1.1 " + answer.status + ends[static_cast<int>(answer.end)] +
            (answer.location.isEmpty() ? QByteArray() : "\r\nLocation: " + answer.location) +
            "\r\nConnection: close\r\n\r\n");
        send(socket, answer, 0);
    }

    void send(QTcpSocket *socket, const Answer &answer, int from)
    {
        const int end = qMin(answer.sent, answer.body.size());
        const QByteArray part = answer.body.mid(from, qMin(answer.chunk, end - from));
        const bool chunks = answer.end == End::Chunks;
        socket->write(chunks ? QByteArray::number(part.size(), 16) + "\r\n" + part + "\r\n" : part);
        if (chunks && from + part.size() == answer.body.size()) socket->write("0\r\n\r\n");
        if (from + part.size() < end)
            QTimer::singleShot(
                answer.pause, socket, [=] { send(socket, answer, from + part.size()); });
        else if (!answer.stalls)
            socket->disconnectFromHost();
    }
};
