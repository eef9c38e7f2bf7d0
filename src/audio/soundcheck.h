#pragma once

#include <QString>

namespace tavik {

// Why a file cannot be imported as a sound.
enum class SoundProblem {
    None,     // a whole sound
    Missing,  // no such file
    NotAFile, // a folder or a device
    Empty,    // no byte
    NotSound, // no format the decoder knows (a picture, a text, a broken header)
    NoSound,  // a sound format that holds no frame
    Cut,      // the file ends before the sound its header announces
};

// Looks at a file as the import takes it: decoded to its end, so a file cut short is found.
SoundProblem FindSoundProblem(const QString& path);

// The problem in words for the headless tool ("not a sound file"); empty for None.
QString SoundProblemText(SoundProblem problem);

} // namespace tavik
