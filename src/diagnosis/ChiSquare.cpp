#include "diagnosis/ChiSquare.h"

#include "core/NumericFault.h"
#include "functions/ProbabilityBeyond.h"

namespace quorvex {

ChiSquare ChiSquareOf(const ModelClass& model, double unitDeviation) {
  ChiSquare result;
  if (!(unitDeviation > 0)) return result;
  const double ratio = std::sqrt(model.RssNorm / model.DOFError) / unitDeviation;
  result.Reduced = ratio * ratio;
  try {
    result.Probability = ProbabilityBeyond(result.Reduced, model.DOFError, HUGE_VAL);
  } catch (const NumericFault&) {
  }
  return result;
}

}  // namespace quorvex
