#pragma once

namespace tavio::bench {

// The measured roads, a file each.
void MeasureTranslation();
void MeasureQueries();
void MeasureSending();
void MeasureAddresses();
void MeasureDispatch();
void MeasureCatalogues();
void MeasureEditing();

}  // namespace tavio::bench
