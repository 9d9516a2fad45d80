#include "files/InterpolationRecord.h"

#include <utility>

namespace quorvex {
namespace {

template <typename Io, typename Curve, typename Table>
void ListFields(Io& io, Curve& curve, Table& table) {
  Section(io, kInterpolation, [&] {
    io(curve.Description);
    io(curve.id);
    io(curve.SolveType);
    io(curve.Solve);
    io(curve.Solved);
    io(curve.LegendText);
    io.Columns(table.X, table.Y, table.Y2);
    io(curve.InputXMin);
    io(curve.InputXMax);
    io(curve.InputYMin);
    io(curve.InputYMax);
    io(curve.ShowErrorBars);
    io(curve.ErrorInfo);
  });
}

}  // namespace

void WriteInterpolation(RecordWriter& io, const InterpClass& curve) {
  ListFields(io, curve, curve.CopyInterpolationTableTo());
}

InterpClass ReadInterpolation(RecordReader& io) {
  InterpClass curve;
  InterpolationTable table;
  ListFields(io, curve, table);
  curve.CopyInterpolationTableFrom(std::move(table));
  return curve;
}

}  // namespace quorvex
