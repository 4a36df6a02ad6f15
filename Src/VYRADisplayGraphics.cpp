// The host's drawing state, textures, coordinates and text: handed on as they are.
#include "VYRAGraphics.h"

#include "VYRAHostServices.h"

void VYRASetGraphicsState(int switch1, int switch2, int switch3, int switch4, int switch5, int switch6,
                          int switch7) {
  gHooks->SetGraphicsState(switch1, switch2, switch3, switch4, switch5, switch6, switch7);
}

void VYRABindTexture2d(int textureNumber, int textureUnit) {
  gHooks->BindTexture2d(textureNumber, textureUnit);
}

void VYRAGenerateTextureNumbers(int* outTextureIds, int count) {
  gHooks->GenerateTextureNumbers(outTextureIds, count);
}

int VYRAGetTexture(int textureId) { return gHooks->GetTexture(textureId); }

void VYRAWorldToLocal(double latitude, double longitude, double altitude, double* outX, double* outY,
                      double* outZ) {
  gHooks->WorldToLocal(latitude, longitude, altitude, outX, outY, outZ);
}

void VYRALocalToWorld(double x, double y, double z, double* outLatitude, double* outLongitude,
                      double* outAltitude) {
  gHooks->LocalToWorld(x, y, z, outLatitude, outLongitude, outAltitude);
}

void VYRADrawTranslucentDarkBox(int left, int top, int right, int bottom) {
  gHooks->DrawTranslucentDarkBox(left, top, right, bottom);
}

void VYRADrawString(float* colorRgb, int x, int y, char* text, int* wordWrapWidth, int fontId) {
  gHooks->DrawString(colorRgb, x, y, text, wordWrapWidth, fontId);
}

void VYRADrawNumber(float* colorRgb, int x, int y, double value, int digits, int decimals, int showSign,
                    int fontId) {
  gHooks->DrawNumber(colorRgb, x, y, value, digits, decimals, showSign, fontId);
}

void VYRAGetFontDimensions(int fontId, int* outCharWidth, int* outCharHeight, int* outDigitsOnly) {
  gHooks->GetFontDimensions(fontId, outCharWidth, outCharHeight, outDigitsOnly);
}

float VYRAMeasureString(int fontId, const char* text, int charCount) {
  return gHooks->MeasureString(fontId, text, charCount);
}
