#include "core/VectorWidth.h"

namespace quorvex {

VectorWidth WidestVectors() {
#ifdef __x86_64__
  __builtin_cpu_init();
  if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl"))
    return VectorWidth::Eight;
  if (__builtin_cpu_supports("avx2")) return VectorWidth::Four;
#endif
  return VectorWidth::Two;
}

// Two, which every processor has, until it is set: loops may run before that.
VectorWidth vectors::inUse = WidestVectors();

}  // namespace quorvex
