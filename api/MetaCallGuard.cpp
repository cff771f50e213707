#include "api/MetaCallGuard.h"

#include "state/Errors.h"

#include <QtCore/private/qobject_p.h>

namespace TabulaControl::detail {

namespace {

// The object's meta-calls, run under a catch. It does not change the
// object's class: metaObject() answers as it would without it.
class MetaCallGuard final : public QDynamicMetaObjectData {
public:
    QMetaObject* toDynamicMetaObject(QObject* object) override
    {
        // The most derived class's metaObject(), asked with this guard out
        // of the way for the call; widgets are used from one thread.
        QObjectPrivate* d = QObjectPrivate::get(object);
        d->metaObject = nullptr;
        const QMetaObject* own = object->metaObject();
        d->metaObject = this;
        return const_cast<QMetaObject*>(own);
    }

    int metaCall(QObject* object, QMetaObject::Call call, int id, void** argv) override
    {
        try {
            return object->qt_metacall(call, id, argv);
        } catch (const ComponentError& error) {
            refuse(call, argv);
            report(static_cast<Tabula&>(*object), error);
        } catch (...) {
            refuse(call, argv);
            logContained("running a call through the meta-object", std::current_exception());
        }
        return -1;
    }

private:
    // QMetaProperty::write returns the status it passes in the third slot.
    static void refuse(QMetaObject::Call call, void** argv)
    {
        if (call == QMetaObject::WriteProperty && argv[2])
            *static_cast<int*>(argv[2]) = 0;
    }
};

}  // namespace

void guardMetaCalls(Tabula& grid)
{
    QObjectPrivate* d = QObjectPrivate::get(&grid);
    if (!d->metaObject)
        d->metaObject = new MetaCallGuard;
}

}  // namespace TabulaControl::detail
