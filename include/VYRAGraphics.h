/*
 * VYRAGraphics.h: the host's drawing state, textures, coordinates and text. Every function hands its
 * arguments to the host as they are: what values, numbers and null pointers mean, in which units, and which
 * are refused, is the host's to say. May be called once the library was started; functions that draw, from
 * draw callbacks.
 */
#ifndef VYRA_GRAPHICS_H
#define VYRA_GRAPHICS_H

#include "VYRADefs.h"

VYRA_BEGIN_DECLARATIONS

/** Sets the host's seven drawing-state switches. [drawing] */
VYRA_API void VYRASetGraphicsState(int switch1, int switch2, int switch3, int switch4, int switch5,
                                   int switch6, int switch7);

/** Binds a texture to a texture unit. [drawing] */
VYRA_API void VYRABindTexture2d(int textureNumber, int textureUnit);

/** Makes texture numbers. outTextureIds holds count ints. [started] */
VYRA_API void VYRAGenerateTextureNumbers(int* outTextureIds, int count);

/** The number of one of the host's own textures. [started] */
VYRA_API int VYRAGetTexture(int textureId);

/** From the world's coordinates to local ones. outX, outY, outZ: one double each. [started] */
VYRA_API void VYRAWorldToLocal(double latitude, double longitude, double altitude, double* outX, double* outY,
                               double* outZ);

/**
 * From local coordinates to the world's. outLatitude, outLongitude, outAltitude: one double each.
 * [started]
 */
VYRA_API void VYRALocalToWorld(double x, double y, double z, double* outLatitude, double* outLongitude,
                               double* outAltitude);

/** A dark box behind text; edges in screen pixels, y upward. [drawing] */
VYRA_API void VYRADrawTranslucentDarkBox(int left, int top, int right, int bottom);

/**
 * Draws text at a pixel. colorRgb holds 3 floats; wordWrapWidth is null, or points to a width in pixels. The
 * library writes to none of them. In C++ a string literal does not become a char*: pass an array, as in
 * char label[] = "altitude", or the data() of a std::string.
 * [drawing]
 */
VYRA_API void VYRADrawString(float* colorRgb, int x, int y, char* text, int* wordWrapWidth, int fontId);

/**
 * Draws a number at a pixel, with so many digits before and decimals behind the point; showSign is 0 or 1.
 * colorRgb holds 3 floats.
 * [drawing]
 */
VYRA_API void VYRADrawNumber(float* colorRgb, int x, int y, double value, int digits, int decimals,
                             int showSign, int fontId);

/** The size of a font's characters in pixels, and whether it has digits alone. [started] */
VYRA_API void VYRAGetFontDimensions(int fontId, int* outCharWidth, int* outCharHeight, int* outDigitsOnly);

/** The width in pixels of the first charCount characters of a text. [started] */
VYRA_API float VYRAMeasureString(int fontId, const char* text, int charCount);

VYRA_END_DECLARATIONS

#endif
