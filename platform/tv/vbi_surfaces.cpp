#include "platform/tv/vbi_surfaces.h"

#include <uuids.h>

#include "platform/tv/caption_stream.h"

namespace quorvex {

MediaType VideoPortVbiType() {
  AM_MEDIA_TYPE type{};
  type.majortype = MEDIATYPE_Video;
  type.subtype = MEDIASUBTYPE_VPVBI;
  type.formattype = FORMAT_None;
  return MediaType(type);
}

VbiSurfaces::VbiSurfaces() : ChainFilter(CLSID_VBISurfaces, {L"VBI Notify"}, {}) {}

bool VbiSurfaces::Takes(std::size_t, const AM_MEDIA_TYPE& type) { return IsOfKind(type, VideoPortVbiType()); }

}  // namespace quorvex
