#include <TabulaControl/Tabula.h>

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QMetaEnum>
#include <QMetaMethod>
#include <QRegularExpression>

#include <gtest/gtest.h>

using TabulaControl::Tabula;

namespace {

// One published member as tests/meta/interface.txt lists it.
struct Member {
    QString kind, name, type, flags, help;
    QString baseName() const { return name.section('(', 0, 0); }
    QStringList parameters() const
    {
        const QString list = name.section('(', 1).chopped(1);
        return list.isEmpty() ? QStringList() : list.split(',');
    }
};

std::vector<Member> publishedInterface()
{
    QFile file(QStringLiteral(TABULA_TEST_DATA "/meta/interface.txt"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text));
    static const QRegularExpression row(R"(^(\w+)\s+(\S+)\s+(\S+)\s+(\S+)\s*(.*)$)");
    std::vector<Member> members;
    for (const QString& line : QString::fromUtf8(file.readAll()).split('\n')) {
        const auto match = row.match(line);
        if (!line.startsWith('#') && match.hasMatch())
            members.push_back({match.captured(1), match.captured(2), match.captured(3), match.captured(4),
                               match.captured(5)});
    }
    return members;
}

const QMetaObject& meta = Tabula::staticMetaObject;

QStringList parameterTypes(const QMetaMethod& method)
{
    QStringList types;
    for (int i = 0; i < method.parameterCount(); ++i)
        types << QString::fromLatin1(method.parameterMetaType(i).name());
    return types;
}

// The invokable method of that name and parameter count, if parameters is
// empty any count.
std::optional<QMetaMethod> invokable(const QString& name, std::optional<QStringList> parameters = {})
{
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.methodType() == QMetaMethod::Method && QString::fromLatin1(method.name()) == name
            && (!parameters || parameterTypes(method) == *parameters))
            return method;
    }
    return std::nullopt;
}

void expectProperty(const Member& member)
{
    const int index = meta.indexOfProperty(member.name.toLatin1().constData());
    ASSERT_GE(index, meta.propertyOffset());
    const QMetaProperty property = meta.property(index);
    EXPECT_EQ(QString::fromLatin1(property.metaType().name()), member.type);
    EXPECT_EQ(property.isWritable(), member.flags.contains('W'));
    EXPECT_EQ(property.isDesignable(), member.flags.contains('D'));
    EXPECT_EQ(property.hasNotifySignal(), member.flags.contains('N'));
    if (property.hasNotifySignal()) {
        EXPECT_EQ(property.notifySignal().name(), "settingsChanged");
    }
}

void expectMethod(const Member& member)
{
    const auto method = invokable(member.baseName(), member.parameters());
    ASSERT_TRUE(method) << "no invokable " << qPrintable(member.name);
    EXPECT_EQ(QString::fromLatin1(method->returnMetaType().name()), member.type);
    if (member.flags.contains('W')) {
        const auto setter = invokable("set" + member.baseName());
        ASSERT_TRUE(setter) << "no invokable setter of " << qPrintable(member.name);
        EXPECT_EQ(parameterTypes(*setter).mid(0, member.parameters().size()), member.parameters());
    }
}

// A form with a grid named "grid" and a slot for each event, named as
// Designer's "Go to slot..." names them; it cancels every edit.
class Form : public QWidget {
    Q_OBJECT
public:
    QStringList heard;

private slots:
#define HEARS(event) void on_grid_##event() { hear(); }
    HEARS(Click) HEARS(BtnClick) HEARS(DblClickEvent) HEARS(KeyDownEvent) HEARS(KeyPress) HEARS(KeyUp)
    HEARS(MouseDownEvent) HEARS(MouseMoveEvent) HEARS(MouseUpEvent) HEARS(Scroll) HEARS(AfterEdit)
    HEARS(BeforeAddRow) HEARS(AfterAddRow) HEARS(BeforeDeleteRow) HEARS(AfterDeleteRow) HEARS(Resize)
    HEARS(RowColChange)
    void on_grid_BeforeEdit(int32_t, int32_t, bool& Cancel) { hear(), Cancel = true; }

private:
    void hear() { heard << QString::fromLatin1(sender()->metaObject()->method(senderSignalIndex()).name()); }
};

}  // namespace

// Every event of events() is a signal of the grid with the same arguments,
// under its own name, with Event added where a method has its signature; raised
// here with zero arguments, each reaches the form.
TEST(MetaObject, EachEventIsASignalOfTheGridThatAFormConnectsByName)
{
    Form form;
    auto* grid = new Tabula(&form);
    grid->setObjectName("grid");
    QMetaObject::connectSlotsByName(&form);
    const QMetaObject& events = TabulaControl::TabulaEvents::staticMetaObject;
    QStringList expected;
    for (int i = events.methodOffset(); i < events.methodCount(); ++i) {
        const QMetaMethod event = events.method(i);
        const int same = meta.indexOfMethod(event.methodSignature());
        const QByteArray name =
            event.name() + (same >= 0 && meta.method(same).methodType() == QMetaMethod::Method ? "Event" : "");
        expected << name;
        const int signal = meta.indexOfSignal(name + event.methodSignature().mid(event.name().size()));
        ASSERT_GE(signal, meta.methodOffset()) << name.constData();
        QVariant values[4];
        void* arguments[5] = {nullptr};
        for (int p = 0; p < event.parameterCount(); ++p)
            arguments[p + 1] = (values[p] = QVariant(event.parameterMetaType(p))).data();
        // moc numbers a class's signals before its other methods.
        QMetaObject::activate(grid, &meta, signal - meta.methodOffset(), arguments);
    }
    EXPECT_EQ(form.heard, expected);
    QApplication::clipboard()->setText("pasted");
    grid->paste();
    EXPECT_EQ(grid->TextMatrix(grid->Row(), grid->Col()), "");
}

TEST(MetaObject, PublishesEveryMemberWithItsTypeDesignabilityAndHelpTextAndTheEnumerations)
{
    const auto members = publishedInterface();
    ASSERT_EQ(members.size(), 72u);
    for (const Member& member : members) {
        SCOPED_TRACE(member.name.toStdString());
        const int help = meta.indexOfClassInfo(member.baseName().toLatin1().constData());
        EXPECT_EQ(help < 0 ? "<none>" : meta.classInfo(help).value(), member.help.toStdString());
        if (member.kind == "property")
            expectProperty(member);
        else
            expectMethod(member);
    }
    const auto properties = std::count_if(members.begin(), members.end(),
                                          [](const Member& m) { return m.kind == "property"; });
    // Members added beyond these follow Qt's naming (lower camel case).
    int published = 0;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        published += QChar(QLatin1Char(meta.property(i).name()[0])).isUpper() ? 1 : 0;
    EXPECT_EQ(published, properties);
    EXPECT_EQ(meta.classInfoCount() - meta.classInfoOffset(), static_cast<int>(members.size()));

    const std::pair<const char*, QStringList> enumerations[] = {
        {"BorderStyles", {"NoBorder", "Single", "ThinRaised", "ThinInset"}},
        {"FixedStyles", {"Flat", "ThreeD"}},
        {"SelectModes", {"SelectionFree", "SelectionByRow", "SelectionByCol"}},
        {"EditMasks", {"NoMask", "Uppercase", "NumericOnly", "DateOnly", "checkmark"}},
    };
    const QMetaObject& scope = TabulaControl::staticMetaObject;
    for (const auto& [name, keys] : enumerations) {
        const QMetaEnum enumeration = scope.enumerator(scope.indexOfEnumerator(name));
        ASSERT_TRUE(enumeration.isValid()) << name;
        ASSERT_EQ(enumeration.keyCount(), keys.size()) << name;
        for (int value = 0; value < keys.size(); ++value)
            EXPECT_EQ(enumeration.keyToValue(keys[value].toLatin1().constData()), value) << name;
    }
}

// Handlers on the grid run before those on events(); a Cancel set by one
// reaches the next and the grid. A property set by name and rows the user
// adds each mark settings changed once.
TEST(MetaObject, EventsReachTheGridThenEventsInOneOrder)
{
    Tabula grid;
    grid.setCols(2);
    QStringList heard;
    bool refuse = true;
    QObject::connect(&grid, &Tabula::BeforeAddRow, [&](bool& cancel) { cancel = refuse; });
    QObject::connect(grid.events(), &TabulaControl::TabulaEvents::BeforeAddRow,
                     [&](bool& cancel) { heard << QStringLiteral("events sees cancel %1").arg(cancel); });
    QObject::connect(&grid, &Tabula::AfterAddRow, [&](int32_t row) { heard << QStringLiteral("grid %1").arg(row); });
    QObject::connect(grid.events(), &TabulaControl::TabulaEvents::AfterAddRow,
                     [&](int32_t row) { heard << QStringLiteral("events %1").arg(row); });
    QObject::connect(&grid, &Tabula::settingsChanged, [&] { heard << "settings"; });
    ASSERT_TRUE(grid.setProperty("Rows", 2));
    grid.AddItem("refused");
    EXPECT_EQ(grid.Rows(), 2);
    refuse = false;
    grid.AddItem("added");
    EXPECT_EQ(heard, QStringList({"settings", "events sees cancel 1", "settings", "events sees cancel 0", "settings",
                                  "grid 3", "events 3", "settings"}));
}

#include "MetaObjectTest.moc"
