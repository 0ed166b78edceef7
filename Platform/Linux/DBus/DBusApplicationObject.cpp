#include "Platform/Linux/DBus/DBusApplicationObject.h"

#include <QDBusError>
#include <optional>
#include <utility>

namespace platform {

namespace {

struct Method {
    const char* name;
    const char* signature;
};

constexpr Method activate{.name = "Activate", .signature = "a{sv}"};
constexpr Method open{.name = "Open", .signature = "asa{sv}"};
constexpr Method activateAction{.name = "ActivateAction", .signature = "sava{sv}"};

bool isMethod(const QDBusMessage& message, const Method& method) {
    return message.member() == QLatin1String(method.name);
}

/// The request that a call with the right arguments makes; none for an action that does not exist.
std::optional<DBusRequest> requestOf(const QDBusMessage& call) {
    if (!isMethod(call, activateAction)) {
        return DBusRequest::openPreferences;
    }
    const QString action = call.arguments().constFirst().toString();
    if (action == QLatin1String("convert")) {
        return DBusRequest::convert;
    }
    if (action == QLatin1String("preferences")) {
        return DBusRequest::openPreferences;
    }
    return std::nullopt;
}

} // namespace

DBusApplicationObject::DBusApplicationObject(std::function<void(DBusRequest)> handle)
    : handle_(std::move(handle)) {}

QString DBusApplicationObject::introspect(const QString& /*path*/) const {
    return QStringLiteral(R"(  <interface name="org.freedesktop.Application">
    <method name="Activate">
      <arg name="platform_data" type="a{sv}" direction="in"/>
    </method>
    <method name="Open">
      <arg name="uris" type="as" direction="in"/>
      <arg name="platform_data" type="a{sv}" direction="in"/>
    </method>
    <method name="ActivateAction">
      <arg name="action_name" type="s" direction="in"/>
      <arg name="parameter" type="av" direction="in"/>
      <arg name="platform_data" type="a{sv}" direction="in"/>
    </method>
  </interface>
)");
}

bool DBusApplicationObject::handleMessage(const QDBusMessage& message,
                                          const QDBusConnection& connection) {
    // A call may leave the interface out.
    if (message.type() != QDBusMessage::MethodCallMessage ||
        (!message.interface().isEmpty() &&
         message.interface() != QLatin1String("org.freedesktop.Application"))) {
        return false;
    }
    for (const Method& method : {activate, open, activateAction}) {
        if (!isMethod(message, method)) {
            continue;
        }
        std::optional<DBusRequest> request;
        if (message.signature() == QLatin1String(method.signature)) {
            request = requestOf(message);
        }
        if (message.isReplyRequired()) {
            connection.send(request ? message.createReply()
                                    : message.createErrorReply(
                                          QDBusError::InvalidArgs,
                                          QStringLiteral("There is no such action or argument")));
        }
        if (request) {
            handle_(*request);
        }
        return true;
    }
    return false;
}

} // namespace platform
