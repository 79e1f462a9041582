// How a film lies in its coordinates: as it should, turned, mirrored, or with y counted the other way.
#pragma once

#include "cases/case.h"

namespace cephtool {

enum class Orientation {
    unknown,    // too few landmarks, or they contradict each other
    right,      // however the film is turned: signs hold
    mirrored,   // signs are reversed, and the face is upright
    y_flipped,  // signs are reversed, and the face stands on its head
    reversed,   // signs are reversed, and the face lies on its side: either of the two
};

// Of a lateral or frontal case; a cast's is unknown.
//
// Every line between two landmarks tells by what angle the case is turned against an average face. In a face that is
// only turned all lines tell the same angle, in one that is mirrored they tell the same one against the average face's
// mirror image. So what is compared is the mean resultant length of both sets of angles, lines weighing by their
// length in the average face (Mardia KV, Jupp PE: Directional Statistics. Wiley 2000, 2.3).
// A film that is mirrored and upside down can't be told from one whose y is flipped, nor the reverse.
Orientation orientation(const Case& record);

}  // namespace cephtool
