#pragma once

#include "tests/shorthand.h"

#include <QMap>
#include <QStringList>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <QUrl>

/// A web server on this machine's loopback address that answers each path as it is told to, well
/// or badly.
class HttpServer : public QTcpServer
{
public:
    /// What tells the client that it has all.
    enum class End { Length, Chunks, Connection };

    struct Answer
    {
        QByteArray body;
        QByteArray status = "200 OK";
        QByteArray location = QByteArray(); ///< where it redirects to
        int announced = -1;                 ///< the length that it claims, if not the body's own
        int chunk = 1 << 30;                ///< bytes at a time ...
        int pause = 0;                      ///< ... with so many milliseconds in between
        int sent = 1 << 30;                 ///< bytes of the body, after which ...
        bool stalls = false;                ///< ... nothing more comes, or else it hangs up
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
    QStringList asked;             ///< paths

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
