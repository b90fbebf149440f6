// The Actions of the opened group as lines of a list. Each is read as it comes into sight: a group
// may have very many.
#pragma once

#include <QAbstractListModel>
#include <QSize>

#include "platform/metrics.h"
#include "platform/qt/qt_text.h"
#include "totals/totals.h"

namespace totals {

class ActionLines : public QAbstractListModel {
 public:
  // `totals` outlives it.
  ActionLines(const CTotals& totals, QObject* parent)
      : QAbstractListModel(parent), totals_(totals) {}

  int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : count_; }
  QVariant data(const QModelIndex& index, int role) const override {
    if (role == Qt::DisplayRole) return platform::qt::ToQt(totals_.ActionText(index.row()));
    if (role == Qt::SizeHintRole) return QSize(0, platform::Scaled(24));
    return {};
  }
  // The opened group is another one, or its Actions are.
  void Reset() {
    beginResetModel();
    count_ = totals_.ActionCount();
    endResetModel();
  }

 private:
  const CTotals& totals_;
  int count_ = 0;
};

}  // namespace totals
