// Prints role and name of everything that assistive technology finds in the windows of a program,
// one a line: walk_accessible PROGRAM. It asks over the bus of the desktop, as a screen reader
// does.

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QSet>
#include <QTextStream>
#include <optional>

namespace {

constexpr char kRegistry[] = "org.a11y.atspi.Registry";
constexpr char kRoot[] = "/org/a11y/atspi/accessible/root";
constexpr char kAccessible[] = "org.a11y.atspi.Accessible";
constexpr int kMostChildren = 500;

/// Where an object is.
struct Place {
  QString service;
  QString path;
};

/// The bus that assistive technology has for itself.
class AccessibleBus {
 public:
  AccessibleBus() : m_bus(Connect()) {}

  QList<Place> ChildrenOf(const Place& place) const {
    const QDBusMessage answer = Call(place, kAccessible, "GetChildren", {});
    QList<Place> children;
    if (answer.type() != QDBusMessage::ReplyMessage) return children;
    const auto list = answer.arguments().constFirst().value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
      Place child;
      QDBusObjectPath path;
      list.beginStructure();
      list >> child.service >> path;
      list.endStructure();
      child.path = path.path();
      children.append(child);
    }
    list.endArray();
    return children;
  }

  QString NameOf(const Place& place) const {
    const QDBusMessage answer = Call(place, "org.freedesktop.DBus.Properties", "Get",
                                     {QLatin1String(kAccessible), QStringLiteral("Name")});
    if (answer.type() != QDBusMessage::ReplyMessage) return {};
    return answer.arguments().constFirst().value<QDBusVariant>().variant().toString();
  }

  QString RoleOf(const Place& place) const {
    const QDBusMessage answer = Call(place, kAccessible, "GetRoleName", {});
    if (answer.type() != QDBusMessage::ReplyMessage) return {};
    return answer.arguments().constFirst().toString();
  }

 private:
  static QDBusConnection Connect() {
    const QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
        QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"));
    const QDBusMessage answer = QDBusConnection::sessionBus().call(question);
    if (answer.type() != QDBusMessage::ReplyMessage)
      qFatal("no accessible bus: %s", qPrintable(answer.errorMessage()));
    return QDBusConnection::connectToBus(answer.arguments().constFirst().toString(),
                                         QStringLiteral("accessible"));
  }

  QDBusMessage Call(const Place& place, const char* interface, const char* method,
                    const QVariantList& arguments) const {
    QDBusMessage question = QDBusMessage::createMethodCall(
        place.service, place.path, QLatin1String(interface), QLatin1String(method));
    question.setArguments(arguments);
    return m_bus.call(question, QDBus::Block, 5000);
  }

  QDBusConnection m_bus;
};

void Walk(const AccessibleBus& bus, const Place& place, QSet<QString>& seen, QTextStream& output) {
  if (seen.contains(place.path)) return;
  seen.insert(place.path);
  output << bus.RoleOf(place) << '\t' << bus.NameOf(place) << '\n';
  const QList<Place> children = bus.ChildrenOf(place);
  for (qsizetype i = 0; i < children.size() && i < kMostChildren; ++i) {
    if (children[i].service == place.service) Walk(bus, children[i], seen, output);
  }
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  if (argc != 2) qFatal("usage: walk_accessible PROGRAM");
  const AccessibleBus bus;
  QTextStream output(stdout);
  bool isThere = false;
  for (const Place& program : bus.ChildrenOf({QLatin1String(kRegistry), QLatin1String(kRoot)})) {
    if (bus.NameOf(program) != QString::fromLocal8Bit(argv[1])) continue;
    isThere = true;
    QSet<QString> seen;
    Walk(bus, program, seen, output);
  }
  return isThere ? 0 : 1;
}
