// SPDX-License-Identifier: MIT
#include <cstdio>

#include "media_error.h"
#include "player/library.h"
#include "player/player.h"

namespace {

constexpr int kFailed = 1;
constexpr int kBadInput = 2;

int Complain(const char* text, int code) {
  std::fprintf(stderr, "nivral_player: error: %s\n", text);
  return code;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const Options options = ParseOptions(argc - 1, argv + 1);
    if (options.help) {
      std::fputs(kUsage, stdout);
      return 0;
    }
    LoadNivral();
    return Player(options).Run();
  } catch (const OptionError& error) {
    return Complain(error.what(), kBadInput);
  } catch (const MissingLibrary& error) {
    return Complain(error.what(), kBadInput);
  } catch (const MediaError& error) {
    return Complain(error.what(), kBadInput);
  } catch (const std::exception& error) {
    return Complain(error.what(), kFailed);
  }
}
