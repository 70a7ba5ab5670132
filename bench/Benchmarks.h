// The benchmarks, one function each; true when every ratio was as wanted.
#pragma once

bool benchDipolesImport();
bool benchFitResultsImport();
bool benchMsiImport();
bool benchSliceDrawing();
bool benchSort();
bool benchView3D();
bool benchArchive();
bool benchScene();
bool benchMemory();
bool benchHistory();
bool benchPanes();
bool benchHeads();
bool benchAudits();
bool benchFormats();
bool benchClusters();
