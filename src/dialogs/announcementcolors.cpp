#include "announcementcolors.h"

namespace tavik {

int ColorOptionOf(quint32 foreColor) {
    int option = -1;
    for (int i = 0; i < static_cast<int>(kAnnouncementColors.size()); ++i) {
        if (foreColor == static_cast<quint32>(kAnnouncementColors[i]))
            option = i;
    }
    return option;
}

ColorChoice ChooseColor(int selectedOption) {
    ColorChoice choice;
    if (selectedOption == kNoHighlightOption) {
        choice.changesLook = true;
        choice.foreColor = 0;
        choice.bold = false;
        return choice;
    }
    if (selectedOption >= 0 && selectedOption < static_cast<int>(kAnnouncementColors.size())) {
        choice.changesLook = true;
        choice.foreColor = static_cast<quint32>(kAnnouncementColors[selectedOption]);
        choice.bold = true;
        choice.stored = kAnnouncementColors[selectedOption];
    }
    return choice;
}

} // namespace tavik
