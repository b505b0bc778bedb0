#include "controls/Fields.h"

#include <QWidget>

namespace zarn {

void Enable(bool on, std::initializer_list<QWidget*> fields) {
    for (QWidget* field : fields) {
        field->setEnabled(on);
    }
}

}  // namespace zarn
