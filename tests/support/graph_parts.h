// The interfaces of a filter graph with nobody behind them: a fake graph overrides what its device may call.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <control.h>

#include "tests/support/com_fake.h"

namespace quorvex {

class NoGraphBuilder : public IGraphBuilder {
 public:
  QUORVEX_UNEXPECTED(AddFilter, IBaseFilter*, LPCWSTR)
  QUORVEX_UNEXPECTED(RemoveFilter, IBaseFilter*)
  QUORVEX_UNEXPECTED(EnumFilters, IEnumFilters**)
  QUORVEX_UNEXPECTED(FindFilterByName, LPCWSTR, IBaseFilter**)
  QUORVEX_UNEXPECTED(ConnectDirect, IPin*, IPin*, const AM_MEDIA_TYPE*)
  QUORVEX_UNEXPECTED(Reconnect, IPin*)
  QUORVEX_UNEXPECTED(Disconnect, IPin*)
  QUORVEX_UNEXPECTED(SetDefaultSyncSource)
  QUORVEX_UNEXPECTED(Connect, IPin*, IPin*)
  QUORVEX_UNEXPECTED(Render, IPin*)
  QUORVEX_UNEXPECTED(RenderFile, LPCWSTR, LPCWSTR)
  QUORVEX_UNEXPECTED(AddSourceFilter, LPCWSTR, LPCWSTR, IBaseFilter**)
  QUORVEX_UNEXPECTED(SetLogFile, DWORD_PTR)
  QUORVEX_UNEXPECTED(Abort)
  QUORVEX_UNEXPECTED(ShouldOperationContinue)
};

class NoMediaControl : public NoDispatch<IMediaControl> {
 public:
  QUORVEX_UNEXPECTED(Run)
  QUORVEX_UNEXPECTED(Pause)
  QUORVEX_UNEXPECTED(Stop)
  QUORVEX_UNEXPECTED(GetState, LONG, OAFilterState*)
  QUORVEX_UNEXPECTED(RenderFile, BSTR)
  QUORVEX_UNEXPECTED(AddSourceFilter, BSTR, IDispatch**)
  QUORVEX_UNEXPECTED(get_FilterCollection, IDispatch**)
  QUORVEX_UNEXPECTED(get_RegFilterCollection, IDispatch**)
  QUORVEX_UNEXPECTED(StopWhenReady)
};

class NoBasicAudio : public NoDispatch<IBasicAudio> {
 public:
  QUORVEX_UNEXPECTED_PROPERTY(Volume, long)
  QUORVEX_UNEXPECTED_PROPERTY(Balance, long)
};

class NoMediaSeeking : public IMediaSeeking {
 public:
  QUORVEX_UNEXPECTED(GetCapabilities, DWORD*)
  QUORVEX_UNEXPECTED(CheckCapabilities, DWORD*)
  QUORVEX_UNEXPECTED(IsFormatSupported, const GUID*)
  QUORVEX_UNEXPECTED(QueryPreferredFormat, GUID*)
  QUORVEX_UNEXPECTED(GetTimeFormat, GUID*)
  QUORVEX_UNEXPECTED(IsUsingTimeFormat, const GUID*)
  QUORVEX_UNEXPECTED(SetTimeFormat, const GUID*)
  QUORVEX_UNEXPECTED(GetDuration, LONGLONG*)
  QUORVEX_UNEXPECTED(GetStopPosition, LONGLONG*)
  QUORVEX_UNEXPECTED(GetCurrentPosition, LONGLONG*)
  QUORVEX_UNEXPECTED(ConvertTimeFormat, LONGLONG*, const GUID*, LONGLONG, const GUID*)
  QUORVEX_UNEXPECTED(SetPositions, LONGLONG*, DWORD, LONGLONG*, DWORD)
  QUORVEX_UNEXPECTED(GetPositions, LONGLONG*, LONGLONG*)
  QUORVEX_UNEXPECTED(GetAvailable, LONGLONG*, LONGLONG*)
  QUORVEX_UNEXPECTED(SetRate, double)
  QUORVEX_UNEXPECTED(GetRate, double*)
  QUORVEX_UNEXPECTED(GetPreroll, LONGLONG*)
};

}  // namespace quorvex
