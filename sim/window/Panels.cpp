#include <array>

#include "window/Panel.h"

namespace sim {

std::span<const Panel> Panels() {
  static const std::array kPanels{kPluginsPanel, kDataRefsPanel, kCommandsPanel, kWindowsPanel,
                                  kLogPanel,     kFlightPanel,   kFramePanel};
  return kPanels;
}

}  // namespace sim
