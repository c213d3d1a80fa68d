#include "checksums/hex/kernels.h"

#define TORNBY_CODEC hex
#include "checksums/codec_kernels.inc"
