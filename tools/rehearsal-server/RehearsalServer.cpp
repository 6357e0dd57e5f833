#include "tools/rehearsal-server/RehearsalServer.h"

#include <QHostAddress>
#include <utility>

#include "tools/rehearsal-server/RehearsalSession.h"

namespace tavelo::rehearsal {

RehearsalServer::RehearsalServer(RehearsalServerOptions options)
    : options_(std::move(options)), server_("tavelo-rehearsal-server", QWebSocketServer::NonSecureMode) {
  QObject::connect(&server_, &QWebSocketServer::newConnection, &server_, [this] {
    while (auto* socket = server_.nextPendingConnection()) new RehearsalSession(options_, socket, &server_);
  });
}

bool RehearsalServer::listen() { return server_.listen(QHostAddress::LocalHost, options_.port); }

std::string RehearsalServer::failure() const { return server_.errorString().toStdString(); }

std::uint16_t RehearsalServer::port() const { return server_.serverPort(); }

}  // namespace tavelo::rehearsal
