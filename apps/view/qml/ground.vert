VARYING vec3 place;
void MAIN() {
    place = (MODEL_MATRIX * vec4(VERTEX, 1.0)).xyz;
}
