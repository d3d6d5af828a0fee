// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLGeoPartition.h"

#include <algorithm>
#include <cmath>

std::vector<double> ZYLGeoPartition(double a, double b, std::vector<double> kinks, int count,
                                    std::vector<char> *isKink)
{
    kinks.erase(std::remove_if(kinks.begin(), kinks.end(), [&](double k) { return !(k > a && k < b); }),
                kinks.end());
    std::sort(kinks.begin(), kinks.end());
    kinks.erase(std::unique(kinks.begin(), kinks.end()), kinks.end());
    std::vector<double> ends{a};
    ends.insert(ends.end(), kinks.begin(), kinks.end());
    ends.push_back(b);

    std::vector<double> borders{a};
    std::vector<char> kinkFlags{0};
    for (size_t k = 0; k + 1 < ends.size(); ++k) {
        const double width = ends[k + 1] - ends[k];
        const int cells = b > a ? std::max(1, int(std::lround(count * width / (b - a)))) : 1;
        for (int c = 1; c <= cells; ++c) {
            borders.push_back(c == cells ? ends[k + 1] : ends[k] + width * c / cells);
            kinkFlags.push_back(c == cells && k + 2 < ends.size());
        }
    }
    if (isKink)
        *isKink = std::move(kinkFlags);
    return borders;
}
