#include "settings/Messages.h"

namespace zarn {

namespace {

BoxAnswer ShowBox(MessageBoxes& boxes, std::string_view title, std::string_view text, BoxIcon icon,
                  BoxButtons buttons = BoxButtons::Ok) {
    return boxes.Show({std::string(title), std::string(text), icon, buttons});
}

}  // namespace

void Messages::Information(std::string_view text) {
    ShowBox(boxes_, "Information", text, BoxIcon::Information);
}

void Messages::Error(std::string_view text) {
    ShowBox(boxes_, "Error", text, BoxIcon::Exclamation);
}

void Messages::ErrorFail(std::string_view text) {
    ShowBox(boxes_, "Critical Error", text, BoxIcon::Stop);
}

bool Messages::Confirmation(std::string_view text) {
    return ShowBox(boxes_, "Confirmation", text, BoxIcon::Question, BoxButtons::YesNo) ==
           BoxAnswer::Yes;
}

bool Messages::ExitSystem(std::string_view text) {
    return ShowBox(boxes_, "", text, BoxIcon::Question, BoxButtons::YesNo) == BoxAnswer::Yes;
}

void Messages::ProcessDone(std::string_view text) {
    ShowBox(boxes_, "", text, BoxIcon::Information);
}

void Messages::Notice(std::string_view text) {
    boxes_.Show({"Error", std::string(text), BoxIcon::Exclamation, BoxButtons::Ok, false});
}

}  // namespace zarn
