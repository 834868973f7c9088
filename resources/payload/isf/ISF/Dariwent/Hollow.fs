/*{
    "DESCRIPTION": "Rings that breathe around the centre of the picture.",
    "CREDIT": "Dariwent",
    "ISFVSN": "2",
    "CATEGORIES": ["Generator"],
    "INPUTS": [
        { "NAME": "rings", "TYPE": "float", "DEFAULT": 8.0, "MIN": 1.0, "MAX": 40.0 },
        { "NAME": "speed", "TYPE": "float", "DEFAULT": 0.5, "MIN": 0.0, "MAX": 4.0 },
        { "NAME": "tint", "TYPE": "color", "DEFAULT": [0.42, 0.32, 0.85, 1.0] }
    ]
}*/

void main() {
    vec2 fromCentre = isf_FragNormCoord - vec2(0.5);
    fromCentre.x *= RENDERSIZE.x / RENDERSIZE.y;
    float wave = sin(length(fromCentre) * rings * 6.2831853 - TIME * speed * 6.2831853);
    gl_FragColor = vec4(tint.rgb * (0.5 + 0.5 * wave), tint.a);
}
