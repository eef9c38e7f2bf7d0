#include "importrefusal.h"

#include "settings/langtexts.h"

namespace tavik {

std::int32_t ImportRefusalText(SoundProblem problem) {
    switch (problem) {
    case SoundProblem::Empty:
        return LangText::ImportRefusedEmpty;
    case SoundProblem::NoSound:
        return LangText::ImportRefusedNoSound;
    case SoundProblem::Cut:
        return LangText::ImportRefusedCut;
    case SoundProblem::NotAFile:
        return LangText::ImportRefusedNotAFile;
    case SoundProblem::None:
    case SoundProblem::Missing:
    case SoundProblem::NotSound:
        break;
    }
    return LangText::ImportRefusedNotSound;
}

} // namespace tavik
