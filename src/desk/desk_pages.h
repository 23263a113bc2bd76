#pragma once

namespace quilla {

enum DeskPage { ChargePage, DischargePage, QueryPage };
constexpr int BarcodeColumn = 1; ///< of the loans and of the returns

} // namespace quilla
