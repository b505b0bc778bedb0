#pragma once

#include <QTimer>
#include <functional>

namespace zarn::testing {

/// Acts once as soon as events run, if that is before its own end.
class Soon {
  public:
    explicit Soon(const std::function<void()>& act) {
        timer_.setSingleShot(true);
        QObject::connect(&timer_, &QTimer::timeout, act);
        timer_.start(0);
    }

  private:
    QTimer timer_;
};

}  // namespace zarn::testing
