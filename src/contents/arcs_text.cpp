#include "contents/arcs_text.h"

#include <array>
#include <cstdint>

namespace zxqtlv {
namespace {

constexpr std::uint32_t kSecondArcs = 40;  // X.690, 8.19.4: the first two arcs share one number

// A subidentifier of any size in limbs of nine decimal digits, the lowest first.
class LargeArc {
  public:
    explicit LargeArc(OctetView octets);

    // Not for values below `subtracted`.
    void subtract(std::uint32_t subtracted);
    void write(TextSink& sink) const;

  private:
    static constexpr std::uint64_t kLimb = 1'000'000'000;
    // 65535 octets of seven bits are fewer than 138100 digits.
    std::array<std::uint32_t, 15345> limbs_;
    std::size_t count_ = 0;
};

LargeArc::LargeArc(OctetView octets) {
    for (std::int32_t i = 0; i < octets.remaining;) {
        // Four octets a round, 28 bits.
        std::uint32_t chunk = 0;
        std::uint32_t factor = 1;
        for (; i < octets.remaining && factor < (1U << 28); ++i) {
            chunk = chunk * 128 + (octets.position[i] & 0x7FU);
            factor *= 128;
        }
        std::uint64_t carry = chunk;
        for (std::size_t limb = 0; limb < count_; ++limb) {
            carry += std::uint64_t{limbs_[limb]} * factor;
            limbs_[limb] = static_cast<std::uint32_t>(carry % kLimb);
            carry /= kLimb;
        }
        if (carry != 0) {
            limbs_[count_++] = static_cast<std::uint32_t>(carry);
        }
    }
}

void LargeArc::subtract(std::uint32_t subtracted) {
    for (std::size_t limb = 0; subtracted != 0; ++limb) {
        if (limbs_[limb] >= subtracted) {
            limbs_[limb] -= subtracted;
            return;
        }
        limbs_[limb] += static_cast<std::uint32_t>(kLimb) - subtracted;
        subtracted = 1;
    }
}

void LargeArc::write(TextSink& sink) const {
    std::size_t limb = count_;
    while (limb > 1 && limbs_[limb - 1] == 0) {
        --limb;
    }
    sink.putDecimal(limbs_[--limb]);
    while (limb > 0 && !sink.full()) {
        std::uint32_t rest = limbs_[--limb];
        for (std::uint32_t power = 100'000'000; power != 0; power /= 10) {
            sink.put(static_cast<char>('0' + rest / power));
            rest %= power;
        }
    }
}

[[gnu::noinline]] void writeLargeArc(TextSink& sink, OctetView octets, std::uint32_t subtracted) {
    LargeArc arc(octets);
    arc.subtract(subtracted);
    arc.write(sink);
}

// Writes the subidentifier at the start of `octets`: one arc, or the two that the first one of an
// object identifier holds. Returns its octets.
std::int32_t writeSubidentifier(TextSink& sink, OctetView octets, bool holdsTwo) {
    constexpr std::int32_t kSmall = 9;  // octets whose value fits 63 bits
    std::uint64_t value = 0;            // of a small one
    std::int32_t count = 0;
    std::uint8_t octet = 0;
    do {
        octet = octets.position[count++];
        value = value * 128 + (octet & 0x7FU);
    } while (octet >= 0x80);
    const bool small = count <= kSmall;
    std::uint32_t subtracted = 0;
    if (holdsTwo) {
        const bool below80 = small && value < 2 * std::uint64_t{kSecondArcs};
        const std::uint32_t firstArc =
            below80 ? static_cast<std::uint32_t>(value) / kSecondArcs : 2;
        sink.putDecimal(firstArc);
        sink.put(' ');
        subtracted = firstArc * kSecondArcs;
    }
    if (small) {
        sink.putDecimal(static_cast<std::int64_t>(value - subtracted));
    } else {
        writeLargeArc(sink, {octets.position, count}, subtracted);
    }
    return count;
}

}  // namespace

void writeArcs(TextSink& sink, const IdentifierArcs& arcs, bool braces) {
    if (braces) {
        sink.put("{ ");
    }
    bool first = true;
    OctetView octets = arcs.octets;
    while (octets.remaining > 0 && !sink.full()) {
        if (!first) {
            sink.put(' ');
        }
        octets = octets.from(writeSubidentifier(sink, octets, first && !arcs.relative));
        first = false;
    }
    if (braces) {
        sink.put(" }");
    }
}

}  // namespace zxqtlv
