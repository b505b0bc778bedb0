#include "join/JoinPageList.h"

#include "controls/Colours.h"
#include "controls/QtText.h"

namespace zarn {

namespace {

constexpr int Columns = 3;

const std::string& CellText(const JoinPart& part, int column) {
    switch (column) {
        case JoinPageList::NameColumn:
            return part.name;
        case JoinPageList::SizeColumn:
            return part.size;
        default:
            return part.status;
    }
}

}  // namespace

void JoinPageList::Show(const JoinReport* report) {
    beginResetModel();
    report_ = report;
    endResetModel();
}

int JoinPageList::rowCount(const QModelIndex& parent) const {
    return report_ == nullptr || parent.isValid() ? 0 : report_->partsCount;
}

int JoinPageList::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Columns;
}

QVariant JoinPageList::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const JoinPart& part = report_->Part(index.row() + 1);
    switch (role) {
        case Qt::DisplayRole:
        case Qt::ToolTipRole:
            return ToQt(CellText(part, index.column()));
        case Qt::ForegroundRole:
            return part.status.empty() || index.column() == StatusColumn
                       ? QVariant()
                       : QVariant(PaintColour(Red));
        default:
            return {};
    }
}

QVariant JoinPageList::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) {
        return {};
    }
    if (role == Qt::TextAlignmentRole) {
        return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
        case NameColumn:
            return "File Part Name";
        case SizeColumn:
            return "Size";
        default:
            return "Status";
    }
}

}  // namespace zarn
