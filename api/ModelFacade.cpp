#include "api/Facade.h"
#include "api/OwnCellsModel.h"
#include "state/ItemModelSource.h"

namespace TabulaControl {

QAbstractItemModel* Tabula::model() const
{
    if (boundModel_)
        return boundModel_;
    if (!ownCellsModel_) {
        auto* self = const_cast<Tabula*>(this);
        ownCellsModel_ = new detail::OwnCellsModel(*self);
        grid_->model.setListener(ownCellsModel_);
    }
    return ownCellsModel_;
}

void Tabula::setModel(QAbstractItemModel* model)
{
    if (model == boundModel_ || (model && model == ownCellsModel_))
        return;
    delete binding_;
    binding_ = nullptr;
    boundModel_ = model;
    if (!model) {
        repaintingChange("setModel", [&] { grid_->unbindCells(); });
        return;
    }
    binding_ = new QObject(this);
    using M = QAbstractItemModel;
    auto follow = [this](auto step) {
        return [this, step](auto&&...) { notify("Model_Changed", [&] { step(); }); };
    };
    auto rowsInserted = [this](const QModelIndex& parent, int first, int last) {
        if (!parent.isValid())
            notify("Model_RowsInserted", [&] { grid_->sourceRowsInserted(first + 1, last + 1); });
    };
    auto rowsRemoved = [this](const QModelIndex& parent, int first, int last) {
        if (!parent.isValid())
            notify("Model_RowsRemoved", [&] { grid_->sourceRowsRemoved(first + 1, last + 1); });
    };
    auto changed = follow([this] { grid_->sourceChanged(); });
    connect(model, &M::rowsInserted, binding_, rowsInserted);
    connect(model, &M::rowsRemoved, binding_, rowsRemoved);
    connect(model, &M::dataChanged, binding_, changed);
    connect(model, &M::headerDataChanged, binding_, changed);
    connect(model, &M::modelReset, binding_, changed);
    connect(model, &M::layoutChanged, binding_, changed);
    connect(model, &M::rowsMoved, binding_, changed);
    connect(model, &M::columnsInserted, binding_, changed);
    connect(model, &M::columnsRemoved, binding_, changed);
    connect(model, &M::columnsMoved, binding_, changed);
    connect(model, &QObject::destroyed, binding_, [this] {
        boundModel_ = nullptr;
        notify("Model_Destroyed", [&] { grid_->unbindCells(); });
    });
    repaintingChange("setModel", [&] { grid_->bindCells(std::make_unique<detail::ItemModelSource>(*model)); });
}

}  // namespace TabulaControl
