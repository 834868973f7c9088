/*{
    "DESCRIPTION": "Blends a picture with one colour.",
    "CREDIT": "Dariwent",
    "ISFVSN": "2",
    "CATEGORIES": ["Color Effect"],
    "INPUTS": [
        { "NAME": "inputImage", "TYPE": "image" },
        { "NAME": "amount", "TYPE": "float", "DEFAULT": 0.5, "MIN": 0.0, "MAX": 1.0 },
        { "NAME": "colour", "TYPE": "color", "DEFAULT": [0.0, 0.0, 0.0, 1.0] }
    ]
}*/

void main() {
    gl_FragColor = mix(IMG_THIS_PIXEL(inputImage), colour, amount);
}
