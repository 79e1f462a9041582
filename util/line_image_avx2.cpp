#include "util/line_image_sweep.h"

namespace tool {

void widen_with_avx2(LineImage image, Neighbours neighbours) {
    sweep<32, line>(image, neighbours);
}

void narrow_with_avx2(LineImage image, Neighbours neighbours) {
    sweep<32, paper>(image, neighbours);
}

}  // namespace tool
