// Secure connections, with certificates and servers of openssl's own program.

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "net/http_client.h"
#include "tests/loopback_server.h"
#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

using namespace std::chrono_literals;

// A server with a certificate of its own that answers every request with a page.
class SecureServer {
 public:
  // `days` may be negative: a certificate that is no longer valid. `name`: as "IP:127.0.0.1".
  SecureServer(const std::string& name, int days) {
    const std::string certificate = Certificate();
    const std::string key = m_folder.PathTo("key.pem");
    const std::string from = days < 0 ? "20200101000000Z" : "20240101000000Z";
    const std::string until = days < 0 ? "20200201000000Z" : "20991231000000Z";
    m_folder.Put("ca.conf", "[ca]\ndefault_ca=d\n[d]\ndatabase=" + m_folder.PathTo("db") +
                                "\nserial=" + m_folder.PathTo("serial") +
                                "\nnew_certs_dir=" + m_folder.Path().string() +
                                "\ndefault_md=sha256\npolicy=p\nunique_subject=no\n[p]\n"
                                "commonName=supplied\n[e]\nsubjectAltName=" +
                                name + "\nbasicConstraints=critical,CA:TRUE\n");
    m_folder.Put("db", "");
    m_folder.Put("serial", "01\n");
    const ProgramResult made =
        RunShell("openssl req -newkey rsa:2048 -nodes -keyout '" + key + "' -subj /CN=test -out '" +
                 m_folder.PathTo("request") + "' && openssl ca -batch -selfsign -notext -config '" +
                 m_folder.PathTo("ca.conf") + "' -extensions e -startdate " + from + " -enddate " +
                 until + " -keyfile '" + key + "' -in '" + m_folder.PathTo("request") + "' -out '" +
                 certificate + "'");
    EXPECT_EQ(made.status, 0) << made.errors;
    m_child = fork();
    if (m_child == 0) {
      const std::string command = "exec openssl s_server -accept 127.0.0.1:0 -www -cert '" +
                                  certificate + "' -key '" + key + "' >'" +
                                  m_folder.PathTo("output") + "' 2>&1 </dev/null";
      execl("/bin/bash", "bash", "-c", command.c_str(), nullptr);
      _exit(127);
    }
    for (int i = 0; i < 1000 && m_port.empty(); ++i) {
      std::this_thread::sleep_for(10ms);
      const std::string output = m_folder.Get("output");
      const size_t end = output.find('\n', output.find("ACCEPT 127.0.0.1:"));
      if (end == std::string::npos) continue;
      const size_t start = output.find("ACCEPT 127.0.0.1:") + 17;
      m_port = output.substr(start, end - start);
    }
    EXPECT_FALSE(m_port.empty()) << m_folder.Get("output");
  }
  ~SecureServer() {
    kill(m_child, SIGKILL);
    WaitFor(m_child);
  }
  SecureServer(const SecureServer&) = delete;
  SecureServer& operator=(const SecureServer&) = delete;

  std::string Certificate() const { return m_folder.PathTo("certificate.pem"); }
  std::string Url(const std::string& host) const { return "https://" + host + ":" + m_port + "/"; }

 private:
  TemporaryFolder m_folder;
  pid_t m_child = -1;
  std::string m_port;
};

// With this file of trusted authorities. Gives the code of the failure.
uint32_t CodeOfGet(const std::string& url, const std::string& trusted,
                   std::string* body = nullptr) {
  if (trusted.empty()) {
    unsetenv("SSL_CERT_FILE");
  } else {
    setenv("SSL_CERT_FILE", trusted.c_str(), 1);
  }
  uint32_t code = 0;
  try {
    const std::string got = HttpGet({url.begin(), url.end()});
    if (body) *body = got;
  } catch (const CInternetException& failure) {
    code = failure.code;
  }
  unsetenv("SSL_CERT_FILE");
  return code;
}

TEST(HttpTls, TrustedServerAnswers) {
  const SecureServer server("IP:127.0.0.1", 30);
  std::string body;
  EXPECT_EQ(CodeOfGet(server.Url("127.0.0.1"), server.Certificate(), &body), 0u);
  EXPECT_NE(body.find("s_server"), std::string::npos);
}

TEST(HttpTls, UnknownAuthorityIsRefused) {
  const SecureServer server("IP:127.0.0.1", 30);
  EXPECT_EQ(CodeOfGet(server.Url("127.0.0.1"), ""), 12045u);
}

TEST(HttpTls, OldCertificateIsRefused) {
  const SecureServer server("IP:127.0.0.1", -1);
  EXPECT_EQ(CodeOfGet(server.Url("127.0.0.1"), server.Certificate()), 12037u);
}

TEST(HttpTls, CertificateOfAnotherNameIsRefused) {
  const SecureServer server("DNS:maps.example", 30);
  EXPECT_EQ(CodeOfGet(server.Url("127.0.0.1"), server.Certificate()), 12038u);
  EXPECT_EQ(CodeOfGet(server.Url("localhost"), server.Certificate()), 12038u);
}

TEST(HttpTls, ServerThatSpeaksPlainHttpHasNoSecureChannel) {
  LoopbackServer plain(LoopbackServer::Talk(
      [](LoopbackConnection& connection) { connection.Send(HttpReply("ok")); }));
  EXPECT_EQ(CodeOfGet("https://" + plain.Address() + "/", ""), 12157u);
}

}  // namespace
