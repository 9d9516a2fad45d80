#include "files/BandRecord.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "diagnosis/Bands.h"

namespace quorvex {
namespace {

// The bands of one series.
struct BandRecord {
  std::int32_t Series = 0;  // its number, from 1
  std::int32_t Kind = 0, Level = 0;
  double Deviation = 0;
  std::array<double, kLimitLevels.size()> Quantiles{};
  std::vector<std::int32_t> Free;  // coefficients, from 1
  std::vector<double> R = {};      // the upper triangle, row by row
};

std::size_t TriangleSize(std::size_t columns) { return columns * (columns + 1) / 2; }

template <typename Io, typename Record>
void ListBands(Io& io, Record& record) {
  io(record.Series);
  io.Bounded(record.Kind, 1, 3);
  io.Bounded(record.Level, 0, static_cast<std::int32_t>(kLimitLevels.size()) - 1);
  io(record.Deviation);
  auto& t = record.Quantiles;
  io(t[0], t[1], t[2], t[3]);
  io.Counted(record.Free, 0, [&](auto& number) { io(number); });
  io.Columns(record.R);
}

BandRecord RecordOf(const PlotSeries& series, std::size_t number, const Bands& bands) {
  BandRecord record{.Series = static_cast<std::int32_t>(number),
                    .Kind = series.Style().Bands,
                    .Level = series.Style().BandLevel,
                    .Deviation = bands.Deviation(),
                    .Quantiles = bands.Quantiles(),
                    .Free = {bands.Geometry().Free().begin(), bands.Geometry().Free().end()}};
  const ColumnMatrix& r = bands.Geometry().R();
  for (std::size_t row = 0; row < r.Columns(); ++row)
    for (std::size_t col = row; col < r.Columns(); ++col) record.R.push_back(r(row, col));
  return record;
}

// Nothing where the record is none for a model with so many coefficients.
std::optional<Bands> BandsOf(const BandRecord& record, int coefficients) {
  const std::size_t n = record.Free.size();
  if (record.R.size() != TriangleSize(n) || n > static_cast<std::size_t>(coefficients)) return std::nullopt;
  if (!(record.Deviation >= 0) || !std::ranges::all_of(record.Quantiles, [](double t) { return t > 0; }))
    return std::nullopt;
  int last = 0;
  for (const std::int32_t i : record.Free)
    if (i <= std::exchange(last, i) || i > coefficients) return std::nullopt;
  ColumnMatrix r(n, n);
  std::size_t next = 0;
  for (std::size_t row = 0; row < n; ++row)
    for (std::size_t col = row; col < n; ++col) r(row, col) = record.R[next++];
  std::optional<FitGeometry> geometry = FitGeometry::Of({record.Free.begin(), record.Free.end()}, std::move(r));
  if (!geometry) return std::nullopt;
  return Bands(std::move(*geometry), record.Deviation, record.Quantiles);
}

}  // namespace

void WriteBands(RecordWriter& io, const PlotPage& plot) {
  std::vector<BandRecord> records;
  for (std::size_t i = 0; i < plot.PlotData.size(); ++i) {
    const PlotSeries& series = plot.PlotData[i];
    if (series.Style().Bands != 0 && series.ErrorBands() != nullptr)
      records.push_back(RecordOf(series, i + 1, *series.ErrorBands()));
  }
  if (records.empty()) return;
  Section(io, kBands, [&] {
    for (const BandRecord& record : records) ListBands(io, record);
  });
}

void ReadBands(RecordReader& io, PlotPage& plot) {
  Section(io, kBands, [&] {
    while (io.GoesOn(kBands)) {
      BandRecord record;
      ListBands(io, record);
      const std::size_t at = static_cast<std::size_t>(record.Series) - 1;
      const bool known = record.Series >= 1 && at < plot.PlotData.size() && plot.PlotData[at].Model() != nullptr &&
                         plot.PlotData[at].Model()->Statistics.X.size() == 1;
      std::optional<Bands> bands = known ? BandsOf(record, plot.PlotData[at].Model()->NumDependentVar()) : std::nullopt;
      if (!bands) return io.Fail();
      plot.PlotData[at].KeepBands(std::move(*bands));
      plot.PlotData[at].Style().Bands = record.Kind;
      plot.PlotData[at].Style().BandLevel = record.Level;
    }
  });
}

}  // namespace quorvex
