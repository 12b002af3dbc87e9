#pragma once
// The device layer's own resource records: host (3), video channel (4), alarm input (5), alarm
// output (6), decoder (12), decoder output (13) and decoder input (17). Each derives directly from
// STRCT_VideoItem. The channel-like ones (4, 5, 6, 13, 17) open their own fields with the channel
// number, which the tree widgets read as the first int behind the base.
//
// Records are never changed once handed out: the store replaces a record by a changed copy
// (CloneDevRecord), so a reader holding one always sees whole values.

#include "DevStructDefine.h"

#include <memory>
#include <string>

// Host (code 3).
struct STRCT_DevHost : public STRCT_VideoItem
{
    int GetType() override;

    std::string m_strAddress;
    int m_iPort = 0;
};

// Video channel (code 4).
struct STRCT_DevChannel : public STRCT_VideoItem
{
    int GetType() override;

    int m_iChannelNo = 0; // kept first: read behind the base by the tree widgets
    int m_iStreamType = 0;
};

// Alarm input (code 5).
struct STRCT_DevAlarmIn : public STRCT_VideoItem
{
    int GetType() override;

    int m_iChannelNo = 0; // kept first
};

// Alarm output (code 6).
struct STRCT_DevAlarmOut : public STRCT_VideoItem
{
    int GetType() override;

    int m_iChannelNo = 0; // kept first
};

// Decoder (code 12).
struct STRCT_DevDecoder : public STRCT_VideoItem
{
    int GetType() override;

    std::string m_strAddress;
    int m_iPort = 0;
};

// Decoder output (code 13).
struct STRCT_DevDecoderOut : public STRCT_VideoItem
{
    int GetType() override;

    int m_iChannelNo = 0; // kept first
};

// Decoder input (code 17).
struct STRCT_DevDecoderIn : public STRCT_VideoItem
{
    int GetType() override;

    int m_iChannelNo = 0; // kept first
};

// A new record of _iType (2 group, or one of the codes above); null for any other code.
std::shared_ptr<STRCT_VideoItem> MakeDevRecord(int _iType);

// A copy of _spItem of the same record kind; null for a kind MakeDevRecord does not make.
std::shared_ptr<STRCT_VideoItem> CloneDevRecord(const std::shared_ptr<STRCT_VideoItem>& _spItem);

// The channel number field of a channel-like record, null for every other kind.
int* DevRecordChannelNo(STRCT_VideoItem* _pItem);
