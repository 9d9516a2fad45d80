#include "core/VectorWidth.h"

namespace quorvex {

VectorWidth WidestVectors() {
#ifdef __x86_64__
  __builtin_cpu_init();
  if (!__builtin_cpu_supports("avx2") || !__builtin_cpu_supports("fma")) return VectorWidth::Two;
  if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl"))
    return VectorWidth::Eight;
  return VectorWidth::Four;
#else
  return VectorWidth::Two;
#endif
}

// Two, which every processor has, until it is set: loops may run before that.
VectorWidth vectors::inUse = WidestVectors();

}  // namespace quorvex
