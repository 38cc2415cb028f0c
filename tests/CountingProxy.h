#pragma once
// A unix-socket proxy in front of a server that counts round trips: each
// time the server answers after the client has spoken (its greeting counts
// as the connect's), one more. What a client pipelines into one flight, or
// sends without waiting for an answer, costs no trip of its own, however
// the kernel splits it: what a network charges for.
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstring>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace ztktest {

class CountingProxy {
 public:
  // Listens on `listen_path` and forwards each connection to `server_path`,
  // each flight `one_way` late (a network's latency, half a round trip).
  CountingProxy(std::string listen_path, std::string server_path,
                std::chrono::microseconds one_way = std::chrono::microseconds(0))
      : listen_path_(std::move(listen_path)),
        server_path_(std::move(server_path)),
        one_way_(one_way) {
    ::unlink(listen_path_.c_str());
    listener_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_un address = Address(listen_path_);
    if (listener_ < 0 ||
        ::bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(listener_, 64) != 0) {
      throw std::runtime_error("proxy cannot listen on " + listen_path_);
    }
    acceptor_ = std::thread([this] { Accept(); });
  }
  CountingProxy(const CountingProxy&) = delete;
  CountingProxy& operator=(const CountingProxy&) = delete;
  ~CountingProxy() {
    stop_ = true;
    ::shutdown(listener_, SHUT_RDWR);
    acceptor_.join();
    for (auto& t : pipes_) t.join();
    ::close(listener_);
    ::unlink(listen_path_.c_str());
  }

  int64_t RoundTrips() const { return trips_; }
  int64_t Connections() const { return connections_; }
  void Reset() { trips_ = 0; }

 private:
  static sockaddr_un Address(const std::string& path) {
    sockaddr_un a{};
    a.sun_family = AF_UNIX;
    std::strncpy(a.sun_path, path.c_str(), sizeof a.sun_path - 1);
    return a;
  }

  void Accept() {
    for (;;) {
      const int client = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
      if (client < 0 || stop_) {
        if (client >= 0) ::close(client);
        return;
      }
      const int server = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
      const sockaddr_un address = Address(server_path_);
      if (::connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        ::close(server);
        ::close(client);
        continue;
      }
      ++connections_;
      pipes_.emplace_back([this, client, server] { Pipe(client, server); });
    }
  }

  void Pipe(int client, int server) {
    bool client_spoke_last = true;
    char buffer[65536];
    pollfd fds[2] = {{client, POLLIN, 0}, {server, POLLIN, 0}};
    while (!stop_) {
      if (::poll(fds, 2, 100) <= 0) continue;
      bool closed = false;
      for (int i = 0; i < 2; ++i) {
        if (!(fds[i].revents & (POLLIN | POLLHUP | POLLERR))) continue;
        const ssize_t n = ::read(fds[i].fd, buffer, sizeof buffer);
        if (n <= 0) {
          closed = true;
          break;
        }
        if (i == 1 && client_spoke_last) ++trips_;

        client_spoke_last = i == 0;
        for (ssize_t sent = 0; sent < n;) {
          const ssize_t w = ::write(fds[1 - i].fd, buffer + sent, static_cast<size_t>(n - sent));
          if (w <= 0) {
            closed = true;
            break;
          }
          sent += w;
        }
      }
      if (closed) break;
    }
    ::close(client);
    ::close(server);
  }

  std::string listen_path_;
  std::string server_path_;
  std::chrono::microseconds one_way_;
  int listener_ = -1;
  std::atomic<bool> stop_{false};
  std::atomic<int64_t> trips_{0};
  std::atomic<int64_t> connections_{0};
  std::thread acceptor_;
  std::vector<std::thread> pipes_;  // joined only by the destructor
};

}  // namespace ztktest
