#include "app/connectbyname.h"

#include <QHash>
#include <QLoggingCategory>
#include <QMetaMethod>
#include <QObject>

namespace {

Q_LOGGING_CATEGORY(log, "tamber.app")

constexpr char prefix[] = "on_";

/// Returns the method of a signal with this name and at least these parameters.
QMetaMethod signalOf(const QObject &sender, const QByteArray &name, const QMetaMethod &slot)
{
    const QMetaObject &type = *sender.metaObject();
    for (int i = 0; i < type.methodCount(); ++i) {
        const QMetaMethod method = type.method(i);
        if (method.methodType() == QMetaMethod::Signal && method.name() == name &&
            QMetaObject::checkConnectArgs(method, slot))
            return method;
    }
    return {};
}

} // namespace

void connectByName(QObject *object, const QObject *part)
{
    QHash<QByteArray, QObject *> children;
    const auto all = part->findChildren<QObject *>();
    for (QObject *child : all)
        if (!child->objectName().isEmpty()) children.insert(child->objectName().toLatin1(), child);

    const QMetaObject &type = *object->metaObject();
    for (int i = 0; i < type.methodCount(); ++i) {
        const QMetaMethod slot = type.method(i);
        const QByteArray name = slot.name();
        if (slot.methodType() != QMetaMethod::Slot || !name.startsWith(prefix)) continue;
        const int start = int(qstrlen(prefix));
        const int split = name.lastIndexOf('_');
        QObject *sender = children.value(name.mid(start, split - start));
        if (!sender) continue;
        const QMetaMethod signal = signalOf(*sender, name.mid(split + 1), slot);
        if (!signal.isValid() || !QObject::connect(sender, signal, object, slot))
            qCWarning(log) << "nothing to connect with" << slot.methodSignature();
    }
}
