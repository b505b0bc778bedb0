#pragma once

#include <QTimer>
#include <functional>

namespace zarn::testing {

/// Acts once as soon as events run, if that is before its own end.
struct Soon : QTimer {
    explicit Soon(const std::function<void()>& act) {
        setSingleShot(true);
        callOnTimeout(act);
        start(0);
    }
};

}  // namespace zarn::testing
