#include "calls/IncomingCallBanner.h"

#include <utility>

namespace brenvale {

IncomingCallBanner::IncomingCallBanner(IncomingCallInfo info)
    : info_(std::move(info)), text_(incomingCallerText(info_)) {}

void IncomingCallBanner::setInfo(IncomingCallInfo info) {
    info_ = std::move(info);
    text_ = incomingCallerText(info_);
    emit infoChanged();
}

} // namespace brenvale
