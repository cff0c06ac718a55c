#include "KwTableMath.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

namespace {

// Order-preserving map of a double onto an unsigned key (negative numbers reversed).
inline std::uint64_t keyOf(double v)
{
    const auto b = std::bit_cast<std::uint64_t>(v);
    return (b & 0x8000000000000000ull) ? ~b : (b | 0x8000000000000000ull);
}

inline double valueOf(std::uint64_t k)
{
    const std::uint64_t b = (k & 0x8000000000000000ull) ? (k & ~0x8000000000000000ull) : ~k;
    return std::bit_cast<double>(b);
}

struct Pair
{
    std::uint64_t key;
    double y;
};

// Least-significant-digit radix sort, 16 bits a pass; passes where every key has the same
// digit are skipped. Stable, linear: a million points sort in a few milliseconds.
void radixSort(std::vector<Pair>& a)
{
    std::vector<Pair> tmp(a.size());
    std::vector<std::uint32_t> count(65536);
    for (int shift = 0; shift < 64; shift += 16) {
        std::fill(count.begin(), count.end(), 0u);
        for (const Pair& p : a)
            ++count[(p.key >> shift) & 0xFFFF];
        if (count[(a.front().key >> shift) & 0xFFFF] == a.size())
            continue;
        std::uint32_t sum = 0;
        for (std::uint32_t& c : count) {
            const std::uint32_t n = c;
            c = sum;
            sum += n;
        }
        for (const Pair& p : a)
            tmp[count[(p.key >> shift) & 0xFFFF]++] = p;
        a.swap(tmp);
    }
}

} // namespace

void qsort_double_two_arrays(double* x, double* y, int lo, int hi)
{
    if (!x || !y || lo < 0 || hi <= lo)
        return;
    const std::size_t n = std::size_t(hi - lo) + 1;
    std::vector<Pair> a(n);
    for (std::size_t i = 0; i < n; ++i)
        a[i] = {keyOf(x[lo + i]), y[lo + i]};
    if (n < 64)
        std::stable_sort(a.begin(), a.end(),
                         [](const Pair& p, const Pair& q) { return p.key < q.key; });
    else
        radixSort(a);
    for (std::size_t i = 0; i < n; ++i) {
        x[lo + i] = valueOf(a[i].key);
        y[lo + i] = a[i].y;
    }
}

void compress_double_two_arrays_tol(double* x, int* n, double* y, double tol)
{
    if (!x || !y || !n || *n <= 1)
        return;
    int kept = 1;
    for (int i = 1; i < *n; ++i) {
        if (std::fabs(x[i] - x[kept - 1]) <= tol)
            continue;
        x[kept] = x[i];
        y[kept] = y[i];
        ++kept;
    }
    *n = kept;
}
