#include "development/mail/Smtp.h"

#include <winsock2.h>
#include <ws2tcpip.h>

#include <utility>

#include "foundation/values/CodePage.h"
#include "foundation/values/Error.h"
#include "foundation/values/SystemHandle.h"

namespace tavio::development {
namespace {

[[noreturn]] void Fail(const Text& description) { throw Error(E_FAIL, L"DevPlatform.Smtp", description); }

struct WinSock {
  WinSock() {
    WSADATA data;
    if (WSAStartup(MAKEWORD(2, 2), &data) != 0) Fail(L"不能使用网络");
  }
  ~WinSock() { WSACleanup(); }
  WinSock(const WinSock&) = delete;
  WinSock& operator=(const WinSock&) = delete;
};

struct SocketKind {
  using Handle = SOCKET;
  static Handle None() noexcept { return INVALID_SOCKET; }
  static void Close(Handle socket) noexcept { closesocket(socket); }
};
using Socket = SystemHandle<SocketKind>;

struct AddressesKind {
  using Handle = addrinfo*;
  static Handle None() noexcept { return nullptr; }
  static void Close(Handle found) noexcept { freeaddrinfo(found); }
};

class Conversation {
 public:
  Conversation(const Text& server, Text* log) : log_(log) { Connect(server); }

  // Sends a line and takes the answer, which must have a code of the given first digit.
  void Say(const std::string& line, char expected) {
    Note("> " + line);
    Send(line + "\r\n");
    Expect(expected);
  }
  // The same for a line that the log must not show.
  void SaySecret(const std::string& line, char expected) {
    Note("> ***");
    Send(line + "\r\n");
    Expect(expected);
  }
  void Expect(char expected) {
    std::string line;
    do {
      line = ReadLine();
      Note("< " + line);
    } while (line.size() > 3 && line[3] == '-');
    if (line.empty() || line[0] != expected) Fail(L"邮件服务器拒绝: " + FromUtf8(line));
  }
  bool IsOnThisMachine() const {
    sockaddr_storage peer = {};
    int size = sizeof peer;
    auto* address = reinterpret_cast<sockaddr*>(&peer);
    return getpeername(socket_.Get(), address, &size) == 0 && IsLoopback(*address);
  }
  void Send(const std::string& bytes) {
    for (std::size_t sent = 0; sent < bytes.size();) {
      const int count = send(socket_.Get(), bytes.data() + sent, static_cast<int>(bytes.size() - sent), 0);
      if (count <= 0) Fail(L"与邮件服务器的连接中断");
      sent += static_cast<std::size_t>(count);
    }
  }

 private:
  void Connect(const Text& server) {
    const auto colon = server.find(L':');
    const std::string host = ToUtf8(server.substr(0, colon));
    const std::string port = colon == Text::npos ? "25" : ToUtf8(server.substr(colon + 1));
    addrinfo hints = {};
    hints.ai_socktype = SOCK_STREAM;
    SystemHandle<AddressesKind> found;
    if (getaddrinfo(host.c_str(), port.c_str(), &hints, found.Receive()) != 0) Fail(L"找不到邮件服务器 " + server);
    for (auto* address = found.Get(); address && !socket_; address = address->ai_next) TryConnect(*address);
    if (!socket_) Fail(L"不能连接邮件服务器 " + server);
    const DWORD wait = 30000;
    for (const int option : {SO_RCVTIMEO, SO_SNDTIMEO}) {
      setsockopt(socket_.Get(), SOL_SOCKET, option, reinterpret_cast<const char*>(&wait), sizeof wait);
    }
  }

  void TryConnect(const addrinfo& address) {
    Socket made(::socket(address.ai_family, address.ai_socktype, address.ai_protocol));
    const bool connected = made && connect(made.Get(), address.ai_addr, static_cast<int>(address.ai_addrlen)) == 0;
    if (connected) socket_ = std::move(made);
  }

  std::string ReadLine() {
    for (;;) {
      const auto end = received_.find("\r\n");
      if (end != std::string::npos) {
        std::string line = received_.substr(0, end);
        received_.erase(0, end + 2);
        return line;
      }
      char piece[512];
      const int count = recv(socket_.Get(), piece, sizeof piece, 0);
      if (count <= 0 || received_.size() > 65536) Fail(L"邮件服务器没有应答");
      received_.append(piece, static_cast<std::size_t>(count));
    }
  }

  void Note(const std::string& line) {
    if (log_) *log_ += FromUtf8(line) + L"\r\n";
  }

  Socket socket_;
  std::string received_;
  Text* log_;
};

// A line that begins with a dot gets one more, since a lone dot ends the mail.
std::string Stuffed(const std::string& mail) {
  std::string text = mail.starts_with('.') ? "." + mail : mail;
  for (std::size_t at = 0; (at = text.find("\r\n.", at)) != std::string::npos; at += 4) text.insert(at + 2, ".");
  return text;
}

void LogIn(Conversation& server, const SmtpAccount& account) {
  if (account.user.empty()) return;
  if (!account.mayTellAnyone && !server.IsOnThisMachine()) Fail(L"邮件服务器不在本机,未加密的登录被禁止");
  server.Say("AUTH LOGIN", '3');
  server.SaySecret(Base64(ToUtf8(account.user)), '3');
  server.SaySecret(Base64(ToUtf8(account.password)), '2');
}

}  // namespace

bool IsLoopback(const sockaddr& address) noexcept {
  const auto isLoopback = [](const unsigned char* v4) { return v4[0] == 127; };
  if (address.sa_family == AF_INET) {
    return isLoopback(reinterpret_cast<const unsigned char*>(&reinterpret_cast<const sockaddr_in&>(address).sin_addr));
  }
  if (address.sa_family != AF_INET6) return false;
  const in6_addr& v6 = reinterpret_cast<const sockaddr_in6&>(address).sin6_addr;
  return IN6_IS_ADDR_LOOPBACK(&v6) || (IN6_IS_ADDR_V4MAPPED(&v6) && isLoopback(v6.s6_addr + 12));
}

void SendOverSmtp(const Text& server, const SmtpAccount& account, const Mail& mail, Text* log) {
  CheckAddresses(mail);
  const WinSock network;
  Conversation conversation(server, log);
  conversation.Expect('2');
  conversation.Say("EHLO localhost", '2');
  LogIn(conversation, account);
  conversation.Say("MAIL FROM:<" + ToUtf8(mail.from) + ">", '2');
  for (const Text& recipient : mail.recipients) conversation.Say("RCPT TO:<" + ToUtf8(recipient) + ">", '2');
  conversation.Say("DATA", '3');
  conversation.Send(Stuffed(Compose(mail)));
  conversation.Say(".", '2');
  conversation.Send("QUIT\r\n");  // the mail is accepted: what the server says to this changes nothing
}

}  // namespace tavio::development
