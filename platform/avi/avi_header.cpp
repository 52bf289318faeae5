#include "platform/avi/avi_header.h"

#include <algorithm>
#include <string_view>

namespace quorvex {
namespace {

// Where the first chunk lies: at a multiple of this, less the header of the list that it is in.
constexpr std::size_t kAlignment = 4096;
constexpr std::size_t kListHeader = 12;
constexpr std::string_view kMaker = "Quorvex recording ";

constexpr std::uint32_t kHasIndex = 0x10;
constexpr std::uint32_t kIsInterleaved = 0x100;

const AviStream* PicturesOf(const AviMovie& movie) {
  const auto found = std::find_if(movie.streams.begin(), movie.streams.end(), [](const AviStream& stream) {
    return stream.kind == StreamKind::kPictures;
  });
  return found == movie.streams.end() ? nullptr : &*found;
}

void PutMainHeader(ByteWriter& writer, const AviMovie& movie, const AviTotals& totals) {
  const AviStream* pictures = PicturesOf(movie);
  std::uint64_t bytes = 0;
  std::uint32_t largest = 0;
  for (const StreamTotals& stream : totals.streams) {
    bytes += stream.bytes;
    largest = std::max(largest, stream.largest);
  }
  const MediaTime length = std::max<MediaTime>(LengthOf(movie, totals), kMillisecond);
  const auto bytesASecond =
      static_cast<std::uint64_t>(Rescale(static_cast<std::int64_t>(bytes), kSecond, length));
  const std::size_t begun = writer.Begin(Letters("avih"));
  writer.U32(pictures != nullptr ? static_cast<std::uint64_t>(pictures->rate.TimeOf(1)) / 10 : 0);
  writer.U32(std::min<std::uint64_t>(bytesASecond, 0x7FFFFFFF)).U32(0).U32(kHasIndex | kIsInterleaved);
  writer.U32(static_cast<std::uint64_t>(totals.firstPictures)).U32(0).U32(movie.streams.size()).U32(largest);
  writer.U32(pictures != nullptr ? pictures->width : 0).U32(pictures != nullptr ? pictures->height : 0);
  writer.Zeros(16);
  writer.End(begun);
}

void PutStreamHeader(ByteWriter& writer, const AviStream& stream, const StreamTotals& totals) {
  const bool sound = stream.kind == StreamKind::kSound;
  const std::size_t begun = writer.Begin(Letters("strh"));
  writer.U32(sound ? Letters("auds") : Letters("vids")).U32(stream.handler).Zeros(12);
  writer.U32(stream.rate.scale).U32(stream.rate.rate).U32(0).U32(static_cast<std::uint64_t>(totals.units));
  writer.U32(totals.largest).U32(0xFFFFFFFF).U32(stream.unitBytes);
  writer.Zeros(4).U16(stream.width).U16(stream.height);
  writer.End(begun);
}

void PutStream(ByteWriter& writer, const AviMovie& movie, std::size_t number, const StreamTotals& totals) {
  const AviStream& stream = movie.streams[number];
  const std::size_t list = writer.BeginList(Letters("strl"));
  PutStreamHeader(writer, stream, totals);
  const std::size_t format = writer.Begin(Letters("strf"));
  writer.Raw(stream.format).End(format);
  const std::size_t index = writer.Begin(Letters("indx"));
  writer.Raw(MakePartList(movie, number, totals.parts)).End(index);
  writer.End(list);
}

// The whole movie's number of pictures, which the main header tells for the first part only.
void PutExtendedHeader(ByteWriter& writer, const AviMovie& movie, const AviTotals& totals) {
  std::int64_t pictures = 0;
  for (std::size_t i = 0; i < movie.streams.size(); ++i) {
    if (movie.streams[i].kind == StreamKind::kPictures)
      pictures = std::max(pictures, totals.streams[i].units);
  }
  const std::size_t list = writer.BeginList(Letters("odml"));
  const std::size_t begun = writer.Begin(Letters("dmlh"));
  writer.U32(static_cast<std::uint64_t>(pictures)).Zeros(244).End(begun);
  writer.End(list);
}

// A chunk that players pass over; it fills the header up to where the list of chunks begins.
void PutMark(ByteWriter& writer, std::uint64_t id) {
  const std::size_t begun = writer.Begin(Letters("JUNK"));
  writer.Raw({reinterpret_cast<const std::uint8_t*>(kMaker.data()), kMaker.size()}).U64(id);
  const std::size_t end = writer.Size() + kListHeader;
  writer.ZerosTo((end + kAlignment - 1) / kAlignment * kAlignment - kListHeader);
  writer.End(begun);
}

}  // namespace

Bytes MakeHeader(const AviMovie& movie, const AviTotals& totals) {
  ByteWriter writer;
  writer.U32(Letters("RIFF")).U32(totals.firstPart).U32(Letters("AVI "));
  const std::size_t list = writer.BeginList(Letters("hdrl"));
  PutMainHeader(writer, movie, totals);
  for (std::size_t i = 0; i < movie.streams.size(); ++i) PutStream(writer, movie, i, totals.streams[i]);
  PutExtendedHeader(writer, movie, totals);
  writer.End(list);
  PutMark(writer, movie.id);
  writer.U32(Letters("LIST")).U32(totals.firstChunks).U32(Letters("movi"));
  return writer.Take();
}

std::uint64_t HeaderBytes(const AviMovie& movie) { return MakeHeader(movie, {}).size(); }

bool IsHeaderOf(const AviMovie& movie, ByteView beginning) {
  // All that the recording changes later is numbers; the mark and what lies around it stay.
  const Bytes ours = MakeHeader(movie, {});
  if (beginning.size() < ours.size()) return false;
  const auto mark = std::search(ours.begin(), ours.end(), kMaker.begin(), kMaker.end());
  return std::equal(mark, ours.end() - kListHeader, beginning.begin() + (mark - ours.begin()));
}

MediaTime LengthOf(const AviMovie& movie, const AviTotals& totals) {
  MediaTime length = 0;
  for (std::size_t i = 0; i < movie.streams.size(); ++i)
    length = std::max(length, movie.streams[i].rate.TimeOf(totals.streams[i].units));
  return length;
}

Bytes MakePartHeader(std::uint64_t partBytes, std::uint64_t chunkBytes) {
  ByteWriter writer;
  writer.U32(Letters("RIFF")).U32(partBytes).U32(Letters("AVIX"));
  writer.U32(Letters("LIST")).U32(chunkBytes).U32(Letters("movi"));
  return writer.Take();
}

}  // namespace quorvex
