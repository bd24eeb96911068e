// A million points saved to a store file and loaded back.
//
//   store_points_example [points.vst]
//
// Builds a uti_CoordCont3D of 1,000,000 points on a helix, saves it in a store file
// (points.vst unless a name is given) under "helix", loads it back and checks every point,
// printing the file's size and the time each step took.
#include <VRKLnuBasicUtils/VRKLnuBasicUtils.h>
#include <VRKLnuBasicUtils/VRKLnuStore.h>

#include <sys/stat.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <vector>

namespace {

constexpr int kPoints = 1000000;

double Seconds(std::chrono::steady_clock::time_point since) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

int Run(const char* name) {
  std::vector<float> xyz(3 * kPoints);
  for (int i = 0; i < kPoints; ++i) {
    xyz[3 * i] = std::cos(i * 0.01f);
    xyz[3 * i + 1] = std::sin(i * 0.01f);
    xyz[3 * i + 2] = i * 0.001f;
  }
  const uti_CoordCont3D helix(xyz.data(), kPoints);

  auto start = std::chrono::steady_clock::now();
  {
    sto_Store store(name);
    store.Save("helix", helix);
  }
  struct stat file;
  stat(name, &file);
  std::printf("saved %d points in %.3f s: %lld bytes\n", helix.Count(), Seconds(start),
              static_cast<long long>(file.st_size));

  start = std::chrono::steady_clock::now();
  const sto_Store store(name);
  const uti_CoordCont3D back = store.LoadValue<uti_CoordCont3D>("helix");
  std::printf("loaded %d points in %.3f s\n", back.Count(), Seconds(start));
  if (back != helix) {
    std::printf("the points differ\n");
    return 1;
  }
  std::printf("every point is as saved\n");
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  int tally = 0;
  VRKLnuBasicUtils_initialize(tally);
  int status = 1;
  try {
    status = Run(argc > 1 ? argv[1] : "points.vst");
  } catch (const nex_Exception& error) {
    std::fprintf(stderr, "%s\n", error.DeveloperReport().c_str());
  }
  VRKLnuBasicUtils_finalize(tally);
  return status;
}
