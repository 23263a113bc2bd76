#pragma once

namespace quilla {

/// The pages of the desk, by their index.
enum DeskPage { ChargePage, DischargePage, QueryPage };
/// Of the grids of the loans and of the returns.
constexpr int BarcodeColumn = 1;

} // namespace quilla
