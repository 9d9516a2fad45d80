#pragma once

#include <span>

#include "core/Prompter.h"
#include "plot/PlotClass.h"

namespace quorvex {

// Something about a plot that the user turns on and off. One without a name separates groups.
struct PlotSwitch {
  const char* Name = nullptr;
  const char* Text = nullptr;  // for a menu
  bool (*IsOn)(const PlotClass& plot) = nullptr;
  // May fail to, such as a logarithmic axis for what isn't positive; IsOn tells. The picture is to be drawn anew.
  void (*Turn)(PlotClass& plot, bool on, Prompter& prompter) = nullptr;
  bool (*Applies)(const PlotClass& plot) = nullptr;  // whether the plot has it at all; null: each has
};

std::span<const PlotSwitch> PlotSwitches();

}  // namespace quorvex
