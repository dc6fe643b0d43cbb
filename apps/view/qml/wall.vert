VARYING vec2 edges;
VARYING vec4 color;
VARYING vec3 place;
void MAIN() {
    edges = UV0;
    color = COLOR;
    place = (MODEL_MATRIX * vec4(VERTEX, 1.0)).xyz;
}
