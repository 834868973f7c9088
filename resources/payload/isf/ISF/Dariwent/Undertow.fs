/*{
    "DESCRIPTION": "Pulls a picture sideways in slow waves.",
    "CREDIT": "Dariwent",
    "ISFVSN": "2",
    "CATEGORIES": ["Distortion Effect"],
    "INPUTS": [
        { "NAME": "inputImage", "TYPE": "image" },
        { "NAME": "amount", "TYPE": "float", "DEFAULT": 0.05, "MIN": 0.0, "MAX": 0.5 },
        { "NAME": "waves", "TYPE": "float", "DEFAULT": 3.0, "MIN": 0.5, "MAX": 20.0 }
    ]
}*/

void main() {
    vec2 place = isf_FragNormCoord;
    place.x += amount * sin(place.y * waves * 6.2831853 + TIME);
    gl_FragColor = IMG_NORM_PIXEL(inputImage, fract(place));
}
