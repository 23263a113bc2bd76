#pragma once

#include "frame/session.h"

namespace quilla {

/// A reader whose panel and loans make a good picture: a valid card with the most books out. Empty when
/// there is none.
QString readerForPictures(Session& session);

/// The reader with the most copies held for collection. Empty when there is none.
QString reservingReaderForPictures(Session& session);

/// The copy that is overdue longest. Empty when there is none.
QString overdueCopyForPictures(Session& session);

} // namespace quilla
