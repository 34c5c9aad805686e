// SPDX-License-Identifier: MIT
#include <cmath>
#include <numbers>

#include "player/media/sound_source.h"

namespace {

class EngineHum : public SoundSource {
 public:
  uint16_t Channels() const override { return 1; }
  uint32_t SamplesPerSecond() const override { return 8000; }
  void Read(std::span<int16_t> samples) override {
    for (int16_t& sample : samples) {
      const double turn = 2 * std::numbers::pi * static_cast<double>(m_next++ % kPeriod) / SamplesPerSecond();
      const double level =
          (std::sin(110 * turn) + 0.5 * std::sin(220 * turn)) * (0.8 + 0.2 * std::sin(0.5 * turn));
      sample = static_cast<int16_t>(level * 5000);
    }
  }
  void Seek(double seconds) override { m_next = static_cast<uint64_t>(seconds * SamplesPerSecond()); }

 private:
  static constexpr uint64_t kPeriod = 16'000;
  uint64_t m_next = 0;
};

}  // namespace

std::unique_ptr<SoundSource> MakeEngineHum() {
  return std::make_unique<EngineHum>();
}
