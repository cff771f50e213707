#include "DatabaseDemo.h"

#include <TabulaControl/Tabula.h>

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlTableModel>
#include <QStandardPaths>
#include <QVBoxLayout>
#include <QVariantList>

namespace {

constexpr int OrderCount = 1'000'000;
constexpr int BatchSize = 20'000;
const QString Connection = QStringLiteral("orders");

QString databasePath()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QDir().mkpath(folder);
    return QDir(folder).filePath(QStringLiteral("orders.sqlite"));
}

// One batch of made-up orders, ids first..first + count - 1.
bool insertBatch(QSqlQuery& insert, int first, int count)
{
    static const char* const customers[] = {"Ames", "Brook", "Castell", "Dunmore", "Ellery", "Fenwick", "Garland"};
    static const char* const products[] = {"Bolts", "Cable", "Drill", "Gasket", "Hinge", "Lamp", "Valve"};
    QVariantList ids, customer, product, quantity, price;
    for (int id = first; id < first + count; ++id) {
        ids << id;
        customer << QString::fromLatin1(customers[id % 7]);
        product << QString::fromLatin1(products[(id / 7) % 7]);
        quantity << 1 + id % 50;
        price << QString::number(1 + (id * 37) % 9900 / 100.0, 'f', 2);
    }
    for (const QVariantList& values : {ids, customer, product, quantity, price})
        insert.addBindValue(values);
    return insert.execBatch();
}

// Creates the table in one transaction, with a progress dialog; false when
// the user cancels or the database fails.
bool createOrders(QSqlDatabase& db, QWidget& parent)
{
    QSqlQuery(db).exec(QStringLiteral("create table orders (id integer primary key, customer text, "
                                      "product text, quantity integer, price text)"));
    QProgressDialog progress(QStringLiteral("Creating a million orders…"), QStringLiteral("Cancel"), 0, OrderCount, &parent);
    progress.setWindowModality(Qt::WindowModal);
    db.transaction();
    QSqlQuery insert(db);
    insert.prepare(QStringLiteral("insert into orders values (?, ?, ?, ?, ?)"));
    for (int first = 1; first <= OrderCount; first += BatchSize) {
        if (progress.wasCanceled() || !insertBatch(insert, first, BatchSize)) {
            db.rollback();
            return false;
        }
        progress.setValue(first + BatchSize - 1);
    }
    return db.commit();
}

QWidget* ordersWindow(QWidget& parent)
{
    const QString path = databasePath();
    const bool existed = QFileInfo::exists(path);
    QSqlDatabase db = QSqlDatabase::contains(Connection) ? QSqlDatabase::database(Connection)
                                                          : QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), Connection);
    db.setDatabaseName(path);
    if (!db.open() || (!existed && !createOrders(db, parent))) {
        db.close();
        QFile::remove(path);
        QMessageBox::warning(&parent, QStringLiteral("Orders"), QStringLiteral("No orders database: ") + db.lastError().text());
        return nullptr;
    }
    auto* window = new QWidget(&parent, Qt::Window);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowTitle(QStringLiteral("Orders: ") + path);
    auto* orders = new QSqlTableModel(window, db);
    orders->setTable(QStringLiteral("orders"));
    orders->setEditStrategy(QSqlTableModel::OnManualSubmit);
    orders->select();
    auto* grid = new TabulaControl::Tabula(window);
    grid->setModel(orders);
    auto* save = new QPushButton(QStringLiteral("Save"));
    auto* revert = new QPushButton(QStringLiteral("Revert"));
    auto* status = new QLabel;
    QObject::connect(save, &QPushButton::clicked, window, [=] {
        status->setText(orders->submitAll() ? QStringLiteral("Saved") : orders->lastError().text());
    });
    QObject::connect(revert, &QPushButton::clicked, window, [=] {
        orders->revertAll();
        status->setText(QStringLiteral("Unsaved changes undone"));
    });
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(save);
    buttons->addWidget(revert);
    buttons->addWidget(status, 1);
    auto* layout = new QVBoxLayout(window);
    layout->addLayout(buttons);
    layout->addWidget(grid);
    window->resize(560, 420);
    return window;
}

}  // namespace

QWidget* ordersDatabaseButton(QWidget& window)
{
    auto* button = new QPushButton(QStringLiteral("Orders database…"));
    QObject::connect(button, &QPushButton::clicked, &window, [&window] {
        if (QWidget* orders = ordersWindow(window))
            orders->show();
    });
    return button;
}
