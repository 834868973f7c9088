/*{
    "DESCRIPTION": "A gradient between two colours.",
    "CREDIT": "Dariwent",
    "ISFVSN": "2",
    "CATEGORIES": ["Generator"],
    "INPUTS": [
        { "NAME": "lower", "TYPE": "color", "DEFAULT": [0.07, 0.06, 0.2, 1.0] },
        { "NAME": "upper", "TYPE": "color", "DEFAULT": [0.98, 0.7, 0.3, 1.0] }
    ]
}*/

void main() {
    gl_FragColor = mix(lower, upper, isf_FragNormCoord.y);
}
