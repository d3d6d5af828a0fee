// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <vector>

/// Returns the borders of a partition of [a, b] (a and b included, increasing) into cells of
/// equal width within each interval between kinks, about `count` cells in all (at least one
/// per interval), so that every kink strictly inside (a, b) is a border. When `isKink` is
/// given it receives, per border, whether a kink lies there. Internal to the library.
std::vector<double> ZYLGeoPartition(double a, double b, std::vector<double> kinks, int count,
                                    std::vector<char> *isKink = nullptr);
