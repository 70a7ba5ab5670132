// The grey picture of one slice of a head, kept until another one is wanted: what is drawn over it may change
// without sampling the volume anew, and another grey window maps the same samples.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "host/head/Head.h"
#include "host/paint/Image.h"
#include "host/picture/SliceSampler.h"

namespace host {

class GreySlice {
 public:
  // The picture of that grid, kept until the next call.
  const Image& picture(const Head& head, const SampleGrid& grid, const GreyWindow& window);

 private:
  struct Key {
    std::shared_ptr<const Volume> volume;
    HeadFrame frame;
    SampleGrid grid;
  };
  bool isSampled(const Head& head, const SampleGrid& grid) const;

  std::optional<Key> m_key;
  std::vector<float> m_values;
  GreyWindow m_window;
  Image m_picture;
};

}  // namespace host
