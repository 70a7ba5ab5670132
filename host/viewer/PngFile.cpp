#include "host/viewer/PngFile.h"

#include <cstdint>
#include <objbase.h>
#include <stdexcept>
#include <vector>
#include <wincodec.h>

#include "host/text/SafeFile.h"

namespace host {

namespace {

// One of the system's objects, given back at the end.
template <class Object>
class Held {
 public:
  Held() = default;
  ~Held() {
    if (m_object != nullptr)
      m_object->Release();
  }
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;

  Object** receive() { return &m_object; }
  Object* operator->() const { return m_object; }
  operator Object*() const { return m_object; }

 private:
  Object* m_object = nullptr;
};

// The system's objects can be used while it lives.
class Components {
 public:
  Components() : m_result(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
  ~Components() {
    if (SUCCEEDED(m_result))
      ::CoUninitialize();
  }
  Components(const Components&) = delete;
  Components& operator=(const Components&) = delete;

 private:
  HRESULT m_result;
};

void check(HRESULT result) {
  if (FAILED(result))
    throw std::runtime_error("Windows cannot make a PNG picture here (error " + std::to_string(result) + ")");
}

std::vector<BYTE> bytesOf(const Image& image) {
  std::vector<BYTE> bytes;
  bytes.reserve(image.pixels().size() * 3);
  for (const Rgb& pixel : image.pixels()) {
    bytes.push_back(pixel.blue);
    bytes.push_back(pixel.green);
    bytes.push_back(pixel.red);
  }
  return bytes;
}

// The whole PNG file in memory.
std::vector<BYTE> encoded(const Image& image) {
  const Components components;
  Held<IWICImagingFactory> factory;
  check(::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                           reinterpret_cast<void**>(factory.receive())));
  Held<IStream> stream;
  check(::CreateStreamOnHGlobal(nullptr, TRUE, stream.receive()));
  Held<IWICBitmapEncoder> encoder;
  check(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, encoder.receive()));
  check(encoder->Initialize(stream, WICBitmapEncoderNoCache));
  Held<IWICBitmapFrameEncode> frame;
  Held<IPropertyBag2> options;
  check(encoder->CreateNewFrame(frame.receive(), options.receive()));
  check(frame->Initialize(options));
  const auto width = static_cast<UINT>(image.width());
  const auto height = static_cast<UINT>(image.height());
  check(frame->SetSize(width, height));
  WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
  check(frame->SetPixelFormat(&format));
  std::vector<BYTE> pixels = bytesOf(image);
  check(frame->WritePixels(height, width * 3, static_cast<UINT>(pixels.size()), pixels.data()));
  check(frame->Commit());
  check(encoder->Commit());

  STATSTG state = {};
  check(stream->Stat(&state, STATFLAG_NONAME));
  check(stream->Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr));
  std::vector<BYTE> bytes(static_cast<std::size_t>(state.cbSize.QuadPart));
  ULONG count = 0;
  check(stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &count));
  bytes.resize(count);
  return bytes;
}

}  // namespace

void writePng(const Image& image, const CString& path) {
  const std::vector<BYTE> bytes = encoded(image);
  writeSafely(path, [&](CFile& file) { file.Write(bytes.data(), static_cast<UINT>(bytes.size())); });
}

}  // namespace host
