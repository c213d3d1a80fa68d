#include "checksums/base64/kernels.h"

#define TORNBY_CODEC base64
#include "checksums/codec_kernels.inc"
