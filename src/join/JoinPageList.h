#pragma once

#include <QAbstractTableModel>

#include "join/JoinAnalysis.h"

namespace zarn {

/// The rows of the join page's list: name, size and status of every part of a report. A row is
/// made when it is drawn, so that a set of any number of parts costs nothing.
class JoinPageList : public QAbstractTableModel {
    Q_OBJECT

  public:
    using QAbstractTableModel::QAbstractTableModel;

    static constexpr int NameColumn = 0;
    static constexpr int SizeColumn = 1;
    static constexpr int StatusColumn = 2;

    /// Shows another report, or no row at all. `report` must stay as it is until the next call.
    void Show(const JoinReport* report);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

  private:
    const JoinReport* report_ = nullptr;
};

}  // namespace zarn
