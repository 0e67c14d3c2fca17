// Lets the graphics processor move each vertex with two joints instead of four. No vertex of a figure has
// more, and a computer without a graphics processor draws twice as fast that way.
import { ShaderChunk } from "three";

const BASE = `
#ifdef USE_SKINNING
  mat4 boneMatX = getBoneMatrix( skinIndex.x );
  mat4 boneMatY = getBoneMatrix( skinIndex.y );
  mat4 boneMatrix = boneMatX * skinWeight.x + boneMatY * skinWeight.y;
#endif
`;

const POSITION = `
#ifdef USE_SKINNING
  transformed = ( boneMatrix * vec4( transformed, 1.0 ) ).xyz;
#endif
`;

const NORMAL = `
#ifdef USE_SKINNING
  objectNormal = mat3( boneMatrix ) * objectNormal;
#endif
`;

/** Must be called before the first picture. */
export function moveWithTwoJoints(): void {
  ShaderChunk.skinbase_vertex = BASE;
  ShaderChunk.skinning_vertex = POSITION;
  ShaderChunk.skinnormal_vertex = NORMAL;
}
