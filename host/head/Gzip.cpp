#include "host/head/Gzip.h"

#include <algorithm>
#include <new>
#include <utility>
#include <vector>
#include <zlib.h>

namespace host {

struct Gzip::Stream {
  z_stream stream{};
};

Gzip::Gzip(Effort effort, AddBytes target)
    : m_target(std::move(target)), m_stream(std::make_unique<Stream>()) {
  constexpr int gzip = 16 + MAX_WBITS;
  constexpr int memory = 8;
  if (::deflateInit2(&m_stream->stream, effort, Z_DEFLATED, gzip, memory, Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::bad_alloc();
  }
}

Gzip::~Gzip() {
  ::deflateEnd(&m_stream->stream);
}

void Gzip::add(std::span<const std::byte> bytes) {
  constexpr std::size_t most = std::size_t{1} << 30U;  // zlib counts with 32 bits
  while (!bytes.empty()) {
    const std::size_t count = (std::min)(bytes.size(), most);
    pack(bytes.first(count), Z_NO_FLUSH);
    bytes = bytes.subspan(count);
  }
}

void Gzip::finish() {
  pack({}, Z_FINISH);
}

void Gzip::pack(std::span<const std::byte> bytes, int flush) {
  z_stream& stream = m_stream->stream;
  std::vector<std::byte> block(std::size_t{1} << 16U);
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<std::byte*>(bytes.data()));
  stream.avail_in = static_cast<uInt>(bytes.size());
  do {
    stream.next_out = reinterpret_cast<Bytef*>(block.data());
    stream.avail_out = static_cast<uInt>(block.size());
    ::deflate(&stream, flush);
    m_target(std::span(block).first(block.size() - stream.avail_out));
  } while (stream.avail_out == 0);
}

}  // namespace host
