#pragma once

namespace quorvex {

// The statistics of a model's input in project and plot files, listed for a RecordWriter or a RecordReader. `input` is
// a DataStatistics with as many variables as the data have.

template <typename Io, typename Input>
void ListInputLimits(Io& io, Input& input) {
  for (auto& x : input.X) io(x.InputXMin);
  for (auto& x : input.X) io(x.InputXMax);
  io(input.InputYMin);
  io(input.InputYMax);
}

template <typename Io, typename Input>
void ListInputMoments(Io& io, Input& input) {
  for (auto& x : input.X) {
    io(x.XMean);
    io(x.XStd);
    io(x.XAtYMin);
    io(x.XAtYMax);
    io(x.YAtXMin);
    io(x.YAtXMax);
  }
  io(input.YMean);
  io(input.YStd);
}

}  // namespace quorvex
